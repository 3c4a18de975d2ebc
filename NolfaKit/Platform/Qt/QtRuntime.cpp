#include "Platform/Qt/QtRuntime.h"

#include "Platform/PlatformError.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMutex>
#include <QSet>
#include <QThread>
#include <array>
#include <clocale>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

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
    [[maybe_unused]] static const auto *const application = new QGuiApplication(count, words.data());
    qInstallMessageHandler(before);
    // The application takes the user's locale for the whole process; numbers in files keep their points.
    std::setlocale(LC_NUMERIC, "C");
}

/// Qt takes the first thread that it meets for the main one, and refers to it until the process ends. In a process
/// without an application of its own that thread must not be one of those that come and go: it is this one, which
/// waits for work and never ends.
class MainThread {
public:
    MainThread()
    {
        std::thread([this] { serve(); }).detach();
        run([] { QThread::currentThread(); });
    }

    /// Has the thread do @p work, and waits for it.
    void run(std::function<void()> work)
    {
        std::packaged_task<void()> task(std::move(work));
        std::future<void> isDone = task.get_future();
        {
            const std::scoped_lock lock(m_mutex);
            m_tasks.push_back(std::move(task));
        }
        m_changed.notify_one();
        isDone.get();
    }

private:
    [[noreturn]] void serve()
    {
        for (;;) {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return !m_tasks.empty(); });
            std::packaged_task<void()> task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            task();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<void()>> m_tasks;
};

MainThread &mainThread()
{
    static auto *const thread = new MainThread;
    return *thread;
}

} // namespace

void QtRuntime::ensure()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (QCoreApplication::instance() == nullptr)
            mainThread().run(makeApplication);
    });
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()) == nullptr)
        throw PlatformError("the application has no part for fonts and pictures");
}

void QtRuntime::ensureMainThread()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (QCoreApplication::instance() == nullptr)
            mainThread();
    });
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
