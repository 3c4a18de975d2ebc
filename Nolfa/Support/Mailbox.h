#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <mutex>

namespace nolfa {

/// Carries calls from any thread to the thread that the mailbox lives on, in the order in which they were posted.
/// However many come, the event loop gets one event for all that lie there, and the thread is handed back to it
/// after a few milliseconds.
class Mailbox : public QObject {
public:
    using Letter = std::function<void()>;

    using QObject::QObject;

    /// Thread-safe, as long as the mailbox exists. Letters that weren't delivered go with the mailbox.
    void post(Letter letter);

protected:
    /// The wake-up, the only event that is posted here.
    void customEvent(QEvent *event) override;

private:
    void deliver();
    void wake();

    std::mutex m_mutex; ///< guards the letters
    std::deque<Letter> m_letters;
};

} // namespace nolfa
