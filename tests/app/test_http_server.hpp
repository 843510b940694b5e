#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

namespace zelvaine::testing {

struct TestResponse {
    int status = 200;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;
    bool sendsLength = true;
    bool neverAnswers = false; // accept, read the request, then keep quiet
};

// Just enough HTTP/1.1 on 127.0.0.1 to serve feeds to the update checker: one canned answer per
// path, 404 for the rest.
class TestHttpServer : public QObject {
    Q_OBJECT
public:
    TestHttpServer();

    QUrl url(const QString& path) const;
    void serve(const QString& path, TestResponse response) { routes_.insert(path, std::move(response)); }
    // The request lines and headers received so far, one entry per request.
    const QList<QByteArray>& requests() const { return requests_; }

private:
    void answer(class QTcpSocket* socket, const QByteArray& head);

    QTcpServer server_;
    QHash<QString, TestResponse> routes_;
    QList<QByteArray> requests_;
};

} // namespace zelvaine::testing
