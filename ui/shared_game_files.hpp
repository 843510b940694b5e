#pragma once

// moc cannot read the C++20 standard headers the store pulls in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "store/game_store.hpp"
#endif

#include <QString>
#include <QUrl>

#include <optional>
#include <string>

namespace zelvaine {

// Only files named like a shared game are taken from outside the game (the command line, the
// file manager, a drop): a stray "game.json" is not ours to ask about.
bool isSharedGameFile(const QString& path);

// Where the file panels start: the folder of the last share while it exists, else Documents
// when the player has one, else home.
QUrl sharedGameFolder(const QString& lastShareFolder);

// A file panel's answer as a path: a typed absolute path comes back as a URL without a scheme.
QString localPath(const QUrl& file);

// Writes a shared game atomically. Nothing, or the player's sentence saying why it failed.
std::optional<QString> writeSharedGame(const QString& path, const std::string& bytes);

// The player's "Share": the store's game written to `path`, and the player told where it went
// or why it did not. The folder it went to, when it was written.
std::optional<QString> shareGame(GameStore& store, const QString& path);

// A shared game the player chose, read and offered to the store, or the player told why not.
void openSharedGame(GameStore& store, const QString& path);

} // namespace zelvaine
