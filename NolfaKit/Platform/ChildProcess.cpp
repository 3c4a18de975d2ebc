#include "Platform/ChildProcess.h"

#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace nolfa {

namespace {

void require(int errorNumber)
{
    if (errorNumber != 0)
        throw PlatformError(std::strerror(errorNumber));
}

struct PipeEnds {
    FileDescriptor read;
    FileDescriptor write;
};

PipeEnds makePipe()
{
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

void makeNonBlocking(const FileDescriptor &descriptor)
{
    ::fcntl(descriptor.get(), F_SETFL, O_NONBLOCK);
}

class FileActions {
public:
    FileActions() { require(::posix_spawn_file_actions_init(&m_actions)); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;
    ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    void duplicate(const FileDescriptor &from, int to)
    {
        require(::posix_spawn_file_actions_adddup2(&m_actions, from.get(), to));
    }
    void changeDirectory(const std::filesystem::path &directory)
    {
        require(::posix_spawn_file_actions_addchdir_np(&m_actions, directory.c_str()));
    }
    /// Libraries open descriptors without close-on-exec; none of them is the child's business.
    void closeFrom(int first) { require(::posix_spawn_file_actions_addclosefrom_np(&m_actions, first)); }

    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

class Attributes {
public:
    Attributes()
    {
        require(::posix_spawnattr_init(&m_attributes));
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }

    [[nodiscard]] const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

std::vector<char *> argumentVector(const std::filesystem::path &executable, const std::vector<std::string> &arguments)
{
    // posix_spawn takes char * for the sake of old programs; it changes nothing.
    std::vector<char *> result{const_cast<char *>(executable.c_str())};
    for (const std::string &argument : arguments)
        result.push_back(const_cast<char *>(argument.c_str()));
    result.push_back(nullptr);
    return result;
}

bool isSetAnew(std::string_view variable, const std::vector<std::string> &environment)
{
    return std::ranges::any_of(environment, [variable](const std::string &own) {
        return variable.starts_with(std::string_view(own).substr(0, own.find('=') + 1));
    });
}

/// What the child is to see of our environment, with the variables given in the place of ours.
std::vector<char *> environmentVector(const std::vector<std::string> &environment)
{
    std::vector<char *> result;
    result.reserve(environment.size());
    for (const std::string &variable : environment)
        result.push_back(const_cast<char *>(variable.c_str()));
    for (char **variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        if (!isSetAnew(*variable, environment))
            result.push_back(*variable);
    }
    result.push_back(nullptr);
    return result;
}

void waitFor(pid_t pid, siginfo_t &end)
{
    while (::waitid(P_PID, static_cast<id_t>(pid), &end, WEXITED) < 0 && errno == EINTR) { }
}

} // namespace

ChildProcess ChildProcess::start(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const std::optional<std::filesystem::path> &currentDirectory, const std::vector<std::string> &environment,
    Input input)
{
    PipeEnds in;
    if (input == Input::piped)
        in = makePipe();
    PipeEnds out = makePipe();
    PipeEnds error = makePipe();

    FileActions actions;
    if (input == Input::piped)
        actions.duplicate(in.read, STDIN_FILENO);
    actions.duplicate(out.write, STDOUT_FILENO);
    actions.duplicate(error.write, STDERR_FILENO);
    if (currentDirectory)
        actions.changeDirectory(*currentDirectory);
    actions.closeFrom(STDERR_FILENO + 1);
    const Attributes attributes;
    const std::vector<char *> vector = argumentVector(executable, arguments);
    const std::vector<char *> variables = environmentVector(environment);

    pid_t pid = 0;
    require(::posix_spawn(&pid, executable.c_str(), actions.get(), attributes.get(), vector.data(), variables.data()));

    FileDescriptor end(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    const int openError = end.isOpen() ? 0 : errno;
    ChildProcess child(pid, std::move(end));
    require(openError);
    child.input = std::move(in.write);
    child.output = std::move(out.read);
    child.error = std::move(error.read);
    for (const FileDescriptor *pipe : {&child.input, &child.output, &child.error}) {
        if (pipe->isOpen())
            makeNonBlocking(*pipe);
    }
    return child;
}

ChildProcess::ChildProcess(pid_t pid, FileDescriptor end) noexcept
    : m_pid(pid)
    , m_end(std::move(end))
{
}

ChildProcess::ChildProcess(ChildProcess &&other) noexcept
    : input(std::move(other.input))
    , output(std::move(other.output))
    , error(std::move(other.error))
    , m_pid(std::exchange(other.m_pid, 0))
    , m_end(std::move(other.m_end))
{
}

ChildProcess::~ChildProcess()
{
    if (m_pid == 0)
        return;
    signalGroup(SIGKILL);
    reap();
}

std::int32_t ChildProcess::reap() noexcept
{
    siginfo_t end{};
    waitFor(std::exchange(m_pid, 0), end);
    m_end.reset();
    return end.si_status;
}

void ChildProcess::signalGroup(int signal) const noexcept
{
    if (m_pid > 0)
        ::kill(-m_pid, signal);
}

} // namespace nolfa
