#include "Nolfa/Support/Desktop.h"

#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/OffscreenApplication.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

/// A file manager that writes down what it is asked for.
class FileManager : public QDBusVirtualObject {
public:
    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls.append(message.interface() + '.' + message.member());
        items = message.arguments().value(0).toStringList();
        return connection.send(refuses ? message.createErrorReply(QDBusError::Failed, "no") : message.createReply());
    }

    QStringList calls;
    QStringList items;
    bool refuses = false;
};

/// A session of the tests' own: a bus, and what opens addresses.
class Session : public ::testing::Environment {
public:
    void SetUp() override
    {
        ensureOffscreenApplication();
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        ASSERT_TRUE(m_bus.waitForReadyRead());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    }
    void TearDown() override
    {
        QDBusConnection::disconnectFromBus(QDBusConnection::sessionBus().name());
        m_bus.terminate();
        m_bus.waitForFinished();
    }

private:
    QProcess m_bus;
};

const auto *const session = ::testing::AddGlobalTestEnvironment(new Session);

/// Takes what would be opened.
class Opener : public QObject {
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler("file"); }

    QStringList opened;

public slots:
    void open(const QUrl &url) { opened.append(url.toString(QUrl::FullyEncoded)); }
};

class DesktopTests : public ::testing::Test {
protected:
    void startFileManager()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        ASSERT_TRUE(bus.registerService("org.freedesktop.FileManager1"));
        ASSERT_TRUE(bus.registerVirtualObject("/org/freedesktop/FileManager1", &fileManager));
    }
    ~DesktopTests() override
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterObject("/org/freedesktop/FileManager1");
        bus.unregisterService("org.freedesktop.FileManager1");
    }

    FileManager fileManager;
    Opener opener;
    SessionDesktop desktop;
};

} // namespace

TEST_F(DesktopTests, revealingAsksTheFileManagerOnceForAllFiles)
{
    startFileManager();
    desktop.reveal({"/out/a b.pdf", "/elsewhere/caf\xE9#.pdf"});
    ASSERT_TRUE(spinUntil([&] { return !fileManager.calls.isEmpty(); }));
    EXPECT_EQ(fileManager.calls, QStringList{"org.freedesktop.FileManager1.ShowItems"});
    EXPECT_EQ(fileManager.items, (QStringList{"file:///out/a%20b.pdf", "file:///elsewhere/caf%E9%23.pdf"}));
    EXPECT_FALSE(spinUntil([&] { return !opener.opened.isEmpty(); }, std::chrono::milliseconds(50)));
}

TEST_F(DesktopTests, withoutAFileManagerEachFolderIsOpenedOnce)
{
    desktop.reveal({"/out/a.pdf", "/out/b.pdf", "/else where/c.pdf"});
    ASSERT_TRUE(spinUntil([&] { return opener.opened.size() == 2; }));
    EXPECT_EQ(opener.opened, (QStringList{"file:///out", "file:///else%20where"}));
}

TEST_F(DesktopTests, aFileManagerThatRefusesIsReplacedToo)
{
    startFileManager();
    fileManager.refuses = true;
    desktop.reveal({"/out/a.pdf"});
    ASSERT_TRUE(spinUntil([&] { return !opener.opened.isEmpty(); }));
    EXPECT_EQ(opener.opened, QStringList{"file:///out"});
}

TEST_F(DesktopTests, aBatchAcrossManyFoldersOpensAFew)
{
    std::vector<std::filesystem::path> files;
    for (int index = 0; index < 100; ++index)
        files.push_back("/" + std::to_string(index) + "/a.pdf");
    desktop.reveal(files);
    ASSERT_TRUE(spinUntil([&] { return !opener.opened.isEmpty(); }));
    EXPECT_EQ(opener.opened.size(), 5);
}

TEST_F(DesktopTests, nothingToRevealDoesNothing)
{
    startFileManager();
    desktop.reveal({});
    EXPECT_FALSE(spinUntil([&] { return !fileManager.calls.isEmpty(); }, std::chrono::milliseconds(50)));
}

TEST_F(DesktopTests, openingHandsTheFileToItsApplication)
{
    desktop.open("/out/été.pdf");
    EXPECT_EQ(opener.opened, QStringList{"file:///out/%C3%A9t%C3%A9.pdf"});
}

#include "DesktopTests.moc"
