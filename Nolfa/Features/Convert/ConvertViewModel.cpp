#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include "Engine/ConversionError.h"
#include "Engine/NolfaEngine.h"
#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Support/FileURL.h"
#include "Platform/CancellationError.h"

#include <QThread>
#include <algorithm>
#include <system_error>
#include <utility>

namespace nolfa {

namespace {

constexpr std::chrono::seconds noticeSpan{4};

DocumentFormat defaultTarget(DocumentFormat source)
{
    return source == DocumentFormat::markdown ? DocumentFormat::pdf : DocumentFormat::markdown;
}

bool isCancellation(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const CancellationError &) {
        return true;
    } catch (const ConversionError &error) {
        return error.as<ConversionError::Cancelled>() != nullptr;
    } catch (...) {
        return false;
    }
}

/// What the end of a run makes of its row. Called where the run ended.
ConvertItemModel::Mutation ending(std::exception_ptr failure, std::filesystem::path output)
{
    if (!failure) {
        return [output = std::move(output)](ConvertItem &item) {
            item.state = ConvertItem::State::done();
            item.output = output;
        };
    }
    // A cancelled row is to do again, and shows no error.
    if (isCancellation(failure))
        return [](ConvertItem &item) { item.state = ConvertItem::State::idle(); };
    return [failure = std::move(failure)](ConvertItem &item) { item.state = ConvertItem::State::failed(failure); };
}

} // namespace

ConvertViewModel::Surroundings ConvertViewModel::standardSurroundings()
{
    return {std::make_shared<EngineConverting>(NolfaEngine::makeService(Bundle::main())),
        std::make_shared<SystemAlarmClock>(), std::make_shared<SessionDesktop>(),
        maxConcurrent(QThread::idealThreadCount())};
}

int ConvertViewModel::maxConcurrent(int processors)
{
    return processors < 4 ? 2 : processors / 2;
}

ConvertViewModel::ConvertViewModel(AppSettings *settings, Surroundings surroundings, QObject *parent)
    : QObject(parent)
    , m_surroundings(std::move(surroundings))
    , m_settings(settings)
    , m_items(m_surroundings.service)
    , m_queue(m_surroundings.maxConcurrent)
{
    if (settings != nullptr)
        connect(settings, &AppSettings::languageChanged, &m_items, &ConvertItemModel::retranslate);
}

ConvertViewModel::~ConvertViewModel() = default;

ConvertViewModel::Progress ConvertViewModel::progress() const
{
    const int total = m_items.count();
    return {std::max(std::min(m_items.settled() + 1, total), 1), total};
}

void ConvertViewModel::add(const QList<QUrl> &urls)
{
    std::vector<std::filesystem::path> paths;
    paths.reserve(static_cast<std::size_t>(urls.size()));
    int skipped = 0;
    for (const QUrl &url : urls) {
        if (std::optional<std::filesystem::path> path = FileURL::toPath(url))
            paths.push_back(std::move(*path));
        else
            ++skipped;
    }
    add(paths, skipped);
}

void ConvertViewModel::add(const std::vector<std::filesystem::path> &urls)
{
    add(urls, 0);
}

void ConvertViewModel::add(const std::vector<std::filesystem::path> &urls, int skipped)
{
    DropNotice notice{.skipped = skipped};
    std::vector<Item> added;
    std::unordered_set<std::string> names;
    for (const std::filesystem::path &url : urls) {
        const std::optional<DocumentFormat> source = DocumentFormats::fromURL(url);
        if (!source)
            ++notice.skipped;
        else if (m_items.containsURL(url) || !names.insert(url.native()).second)
            ++notice.duplicates;
        else
            added.push_back(
                {.id = QUuid::createUuid(), .url = url, .source = *source, .target = defaultTarget(*source)});
    }
    m_items.append(std::move(added));
    post(notice);
    publish();
}

void ConvertViewModel::post(DropNotice notice)
{
    m_noticeTask.reset();
    if (notice == DropNotice{}) {
        setNotice(std::nullopt);
        return;
    }
    m_noticeTask = m_surroundings.clock->ringAfter(noticeSpan, [this] { setNotice(std::nullopt); });
    setNotice(notice);
}

void ConvertViewModel::setNotice(std::optional<DropNotice> notice)
{
    if (m_notice == notice)
        return;
    m_notice = notice;
    emit noticeChanged();
}

void ConvertViewModel::setTarget(DocumentFormat target, QUuid id)
{
    m_items.update(id, [target](Item &item) {
        item.target = target;
        item.state = Item::State::idle();
        item.output.reset();
    });
    publish();
}

void ConvertViewModel::setTarget(const QString &target, QUuid id)
{
    if (const std::optional<DocumentFormat> format = DocumentFormats::fromRawValue(target.toStdString()))
        setTarget(*format, id);
}

void ConvertViewModel::remove(QUuid id)
{
    cancelTask(id);
    m_runs.erase(id);
    m_items.remove(id);
    forget(id);
    publish();
}

void ConvertViewModel::cancelTask(QUuid id)
{
    const auto place = m_tasks.find(id);
    if (place == m_tasks.end())
        return;
    std::stop_source task = std::move(place->second);
    m_tasks.erase(place);
    task.request_stop();
}

void ConvertViewModel::forget(QUuid id)
{
    if (m_batch.erase(id) != 0 && m_batch.empty())
        endBatch();
}

void ConvertViewModel::endBatch()
{
    m_batch.clear();
    m_batchOutputs.clear();
    m_revealWhenBatchEnds = false;
}

void ConvertViewModel::clear()
{
    // The last in line first, so that no slot that frees meanwhile starts a row that is to go anyway.
    std::for_each(items().rbegin(), items().rend(), [this](const Item &item) { cancelTask(item.id); });
    m_runs.clear();
    m_items.clear();
    endBatch();
    post({});
    publish();
}

void ConvertViewModel::convertAll()
{
    std::vector<QUuid> pending;
    for (const Item &item : items()) {
        if (item.isPending())
            pending.push_back(item.id);
    }
    if (pending.empty())
        return;
    m_batch = {pending.begin(), pending.end()};
    m_batchOutputs.clear();
    m_revealWhenBatchEnds = m_settings && m_settings->revealAfterConvert();
    // All at once for the screens; rows that wait in the queue show as running too.
    m_items.update(pending, [](Item &item) {
        item.state = Item::State::running();
        item.output.reset();
    });
    for (const QUuid &id : pending)
        convert(id);
    publish();
}

void ConvertViewModel::convert(QUuid id)
{
    const Item *item = m_items.find(id);
    if (item == nullptr)
        return;
    cancelTask(id);
    const int run = ++m_runs[id];
    const auto output = std::make_shared<std::filesystem::path>();
    auto work = [service = m_surroundings.service, input = item->url, target = item->target,
                    folder = m_settings ? m_settings->outputDirectory() : std::nullopt,
                    output](const std::stop_token &stop) { *output = service->convert(input, target, folder, stop); };
    // The queue, and so every call of this, ends before the mailbox does.
    auto completion = [this, id, run, output](std::exception_ptr failure) {
        m_mailbox.post(
            [this, id, run, mutation = ending(std::move(failure), std::move(*output))] { finish(id, run, mutation); });
    };
    try {
        m_tasks.insert_or_assign(id, m_queue.enqueue(std::move(work), completion));
    } catch (const std::system_error &) {
        // No thread to be had: a failure like any other.
        completion(std::current_exception());
    }
}

void ConvertViewModel::finish(QUuid id, int run, const ConvertItemModel::Mutation &mutation)
{
    // The row was restarted, removed or cleared meanwhile: too late.
    const auto latest = m_runs.find(id);
    if (latest == m_runs.end() || latest->second != run)
        return;
    m_tasks.erase(id);
    m_items.update(id, mutation);
    settle(id);
    publish();
}

void ConvertViewModel::settle(QUuid id)
{
    if (m_batch.erase(id) == 0)
        return;
    const Item *item = m_items.find(id);
    if (item != nullptr && item->output)
        m_batchOutputs.push_back(*item->output);
    if (!m_batch.empty())
        return;
    const std::vector<std::filesystem::path> outputs = std::move(m_batchOutputs);
    const bool reveals = m_revealWhenBatchEnds;
    endBatch();
    if (reveals && !outputs.empty())
        m_surroundings.desktop->reveal(outputs);
}

void ConvertViewModel::reveal(QUuid id)
{
    const Item *item = m_items.find(id);
    if (item != nullptr && item->output)
        m_surroundings.desktop->reveal({*item->output});
}

void ConvertViewModel::open(QUuid id)
{
    const Item *item = m_items.find(id);
    if (item != nullptr && item->output)
        m_surroundings.desktop->open(*item->output);
}

void ConvertViewModel::publish()
{
    if (std::exchange(m_publishedConverting, isConverting()) != isConverting())
        emit isConvertingChanged();
    if (const Progress now = progress(); std::exchange(m_publishedProgress, now) != now)
        emit progressChanged();
}

} // namespace nolfa
