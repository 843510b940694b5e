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

} // namespace zelvaine
