#pragma once

#include <filesystem>
#include <vector>

namespace nolfa {

/// What the screens ask of the user's desktop. Nothing is reported back: where the desktop can't do it, nothing
/// happens. Main thread only; never blocks.
class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;
    virtual ~Desktop() = default;

    /// Shows files, selected in their folders, in the file manager.
    virtual void reveal(const std::vector<std::filesystem::path> &files) = 0;

    /// Opens a file with its default application.
    virtual void open(const std::filesystem::path &file) = 0;
};

/// The desktop of the user's session: its file manager by D-Bus (org.freedesktop.FileManager1), or else whatever
/// opens folders. Opening needs a QGuiApplication.
class SessionDesktop : public Desktop {
public:
    void reveal(const std::vector<std::filesystem::path> &files) override;
    void open(const std::filesystem::path &file) override;
};

} // namespace nolfa
