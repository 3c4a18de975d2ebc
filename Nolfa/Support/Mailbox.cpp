#include "Nolfa/Support/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>
#include <chrono>

namespace nolfa {

namespace {

/// Short enough for a window to draw its next frame in time.
constexpr std::chrono::milliseconds longestDelivery{8};

} // namespace

void Mailbox::post(Letter letter)
{
    bool wasEmpty = false;
    {
        const std::scoped_lock lock(m_mutex);
        wasEmpty = m_letters.empty();
        m_letters.push_back(std::move(letter));
    }
    if (wasEmpty)
        wake();
}

void Mailbox::customEvent(QEvent * /*event*/)
{
    deliver();
}

void Mailbox::deliver()
{
    std::deque<Letter> letters;
    {
        const std::scoped_lock lock(m_mutex);
        letters.swap(m_letters);
    }
    const auto end = std::chrono::steady_clock::now() + longestDelivery;
    while (!letters.empty() && std::chrono::steady_clock::now() < end) {
        const Letter letter = std::move(letters.front());
        letters.pop_front();
        letter();
    }
    if (letters.empty())
        return;
    const std::scoped_lock lock(m_mutex);
    // In front of what came meanwhile, and with a wake-up of their own: the sender of the first newcomer may have
    // found the box empty, and a second event does no harm.
    m_letters.insert(
        m_letters.begin(), std::make_move_iterator(letters.begin()), std::make_move_iterator(letters.end()));
    wake();
}

void Mailbox::wake()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

} // namespace nolfa
