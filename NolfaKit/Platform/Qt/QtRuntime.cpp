#include "Platform/Qt/QtRuntime.h"

#include "Platform/PlatformError.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMutex>
#include <QSet>
#include <array>
#include <clocale>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace nolfa {

namespace {

void keepSilent(QtMsgType, const QMessageLogContext &, const QString &) { }

/// An application without a screen. Never destroyed: fonts and pictures may be in use until the very end.
void makeApplication()
{
    static std::array<char, 6> name{"nolfa"};
    static std::array<char, 10> option{"-platform"};
    static std::array<char, 10> platform{"offscreen"};
    static std::array<char *, 4> words{name.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    // It complains of a locale without UTF-8 and of the thread, neither of which matters here.
    const QtMessageHandler before = qInstallMessageHandler(keepSilent);
    new QGuiApplication(count, words.data());
    qInstallMessageHandler(before);
    // The application takes the user's locale for the whole process; numbers in files keep their points.
    std::setlocale(LC_NUMERIC, "C");
}

/// The thread that made the application counts as the main one, so it outlives all use: it sleeps until the process
/// ends.
void makeApplicationOnItsThread()
{
    const auto isMade = std::make_shared<std::promise<void>>();
    std::thread([isMade] {
        makeApplication();
        isMade->set_value();
        for (;;)
            ::pause();
    }).detach();
    isMade->get_future().wait();
}

} // namespace

void QtRuntime::ensure()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (QCoreApplication::instance() == nullptr)
            makeApplicationOnItsThread();
    });
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()) == nullptr)
        throw PlatformError("the application has no part for fonts and pictures");
}

void QtRuntime::addFonts(const std::filesystem::path &folder)
{
    static QMutex mutex;
    static QSet<QString> known;
    const QString path = QString::fromStdString(folder.string());
    const QMutexLocker lock(&mutex);
    if (known.contains(path))
        return;
    known.insert(path);
    for (const QFileInfo &file : QDir(path).entryInfoList({"*.ttf"}, QDir::Files, QDir::Name))
        QFontDatabase::addApplicationFont(file.filePath());
}

} // namespace nolfa
