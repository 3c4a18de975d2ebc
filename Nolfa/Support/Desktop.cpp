#include "Nolfa/Support/Desktop.h"

#include "Nolfa/Support/FileURL.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <algorithm>

namespace nolfa {

namespace {

/// A window for each folder is a help as long as there are few.
constexpr std::size_t mostFolders = 5;

void openFolders(const std::vector<std::filesystem::path> &files)
{
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path &file : files) {
        const std::filesystem::path folder = file.parent_path();
        if (folders.size() < mostFolders && std::ranges::find(folders, folder) == folders.end())
            folders.push_back(folder);
    }
    for (const std::filesystem::path &folder : folders)
        QDesktopServices::openUrl(FileURL::fromPath(folder));
}

QDBusMessage showItems(const std::vector<std::filesystem::path> &files)
{
    QStringList addresses;
    for (const std::filesystem::path &file : files)
        addresses.append(FileURL::fromPath(file).toString(QUrl::FullyEncoded));
    QDBusMessage call = QDBusMessage::createMethodCall(
        "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems");
    call << addresses << QString();
    return call;
}

} // namespace

void SessionDesktop::reveal(const std::vector<std::filesystem::path> &files)
{
    if (files.empty())
        return;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openFolders(files);
        return;
    }
    // Owns itself until the file manager has answered, which may have to be started first.
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(showItems(files)));
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, files] {
        if (QDBusPendingReply<>(*answer).isError())
            openFolders(files);
        answer->deleteLater();
    });
}

void SessionDesktop::open(const std::filesystem::path &file)
{
    QDesktopServices::openUrl(FileURL::fromPath(file));
}

} // namespace nolfa
