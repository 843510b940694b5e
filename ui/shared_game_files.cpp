#include "ui/shared_game_files.hpp"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace zelvaine {

bool isSharedGameFile(const QString& path) { return QFileInfo(path).suffix().toLower() == QLatin1String("zelvaine"); }

QString localPath(const QUrl& file)
{
    if (file.isLocalFile()) return file.toLocalFile();
    return file.scheme().isEmpty() ? file.path() : QString();
}

QUrl sharedGameFolder(const QString& lastShareFolder)
{
    for (const QString& folder : {lastShareFolder, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir()) return QUrl::fromLocalFile(folder);
    }
    return QUrl::fromLocalFile(QDir::homePath());
}

std::optional<QString> writeSharedGame(const QString& path, const std::string& bytes)
{
    const QFileInfo file(path);
    const QString folder = QDir::toNativeSeparators(file.absolutePath());
    // The panel lets the player type any folder; say plainly which one was wrong.
    if (!QFileInfo(file.absolutePath()).isDir())
        return QCoreApplication::translate("SharedGameFiles",
                                           "The game was not shared: the folder “%1” does not exist.")
            .arg(folder);

    QSaveFile out(path);
    if (out.open(QIODevice::WriteOnly)) {
        const bool written =
            out.write(bytes.data(), static_cast<qint64>(bytes.size())) == static_cast<qint64>(bytes.size());
        if (written && out.commit()) return std::nullopt;
    }
    // Qt reports a full disk as running out of resources.
    if (out.error() == QFileDevice::ResourceError)
        return QCoreApplication::translate("SharedGameFiles", "The game was not shared: the disk is full.");
    if (!QFileInfo(file.absolutePath()).isWritable() || (file.exists() && !file.isWritable()))
        return QCoreApplication::translate("SharedGameFiles", "The game was not shared: “%1” cannot be written to.")
            .arg(QDir::toNativeSeparators(file.absoluteFilePath()));
    return QCoreApplication::translate("SharedGameFiles", "The game was not shared: “%1” could not be written (%2).")
        .arg(QDir::toNativeSeparators(file.absoluteFilePath()), out.errorString());
}

std::optional<QString> shareGame(GameStore& store, const QString& path)
{
    const auto document = store.makeDocument();
    if (!document) return std::nullopt;
    if (const auto failure = writeSharedGame(path, document->encode())) {
        store.showNotice(failure->toStdString());
        return std::nullopt;
    }
    const QFileInfo written(path);
    store.showNotice(QCoreApplication::translate("SharedGameFiles", "Game shared as “%1” in %2.")
                         .arg(written.fileName(), QDir::toNativeSeparators(written.absolutePath()))
                         .toStdString());
    return written.absolutePath();
}

void openSharedGame(GameStore& store, const QString& path)
{
    // While another question is asked, the file is still read, so that a broken one says so;
    // a good one waits for nothing, as the player is answering something else.
    const auto reject = [&store](const std::optional<std::string>& description) {
        if (store.confirmation()) store.showNotice(description.value_or(sharedGameFailureText()));
        else store.rejectSharedGame(description);
    };
    auto document = ZelvaineGameDocument::read(path.toStdString());
    if (!document) return reject(document.error().playerDescription());
    if (store.confirmation()) {
        if (auto states = document->makeStates(); !states) reject(states.error().description());
        return;
    }
    if (const auto error = store.prepareSharedGame(*document)) reject(error->description());
}

} // namespace zelvaine
