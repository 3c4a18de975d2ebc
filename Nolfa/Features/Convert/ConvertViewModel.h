#pragma once

#include "Engine/ConversionQueue.h"
#include "Nolfa/Features/Convert/ConvertItemModel.h"
#include "Nolfa/Support/AlarmClock.h"
#include "Nolfa/Support/Desktop.h"
#include "Nolfa/Support/Mailbox.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <filesystem>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace nolfa {

class AppSettings;

/// What a drop brought besides rows.
struct DropNotice {
    int skipped = 0; ///< files whose format nobody can open
    int duplicates = 0; ///< files already in the list

    bool operator==(const DropNotice &) const = default;
};

/// The model of the convert tool: the files that the user has gathered, the target of each, the conversions in
/// flight, and the short notice after a drop. It hands each file to the service through a queue and sorts what comes
/// back. Main thread only; nothing here blocks. Destruction stops what runs and waits for it to end.
class ConvertViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(nolfa::ConvertItemModel *items READ itemModel CONSTANT)
    Q_PROPERTY(bool hasNotice READ hasNotice NOTIFY noticeChanged)
    Q_PROPERTY(int skipped READ skipped NOTIFY noticeChanged)
    Q_PROPERTY(int duplicates READ duplicates NOTIFY noticeChanged)
    Q_PROPERTY(bool isConverting READ isConverting NOTIFY isConvertingChanged)
    Q_PROPERTY(int current READ current NOTIFY progressChanged)
    Q_PROPERTY(int total READ total NOTIFY progressChanged)

public:
    using Item = ConvertItem;

    /// What the model works with.
    struct Surroundings {
        std::shared_ptr<const DocumentConverting> service;
        std::shared_ptr<AlarmClock> clock;
        std::shared_ptr<Desktop> desktop;
        int maxConcurrent = 2;
    };

    struct Progress {
        int current = 1;
        int total = 0;
        bool operator==(const Progress &) const = default;
    };

    /// The engine with the application's own bundle, the session's desktop, and as many conversions at once as this
    /// machine's processors allow.
    [[nodiscard]] static Surroundings standardSurroundings();

    /// Half the processors, but at least 2.
    [[nodiscard]] static int maxConcurrent(int processors);

    /// @param settings  null: outputs beside their inputs, nothing revealed
    explicit ConvertViewModel(
        AppSettings *settings, Surroundings surroundings = standardSurroundings(), QObject *parent = nullptr);
    ~ConvertViewModel() override;

    [[nodiscard]] const std::vector<Item> &items() const { return m_items.items(); }
    [[nodiscard]] ConvertItemModel *itemModel() { return &m_items; }
    [[nodiscard]] const std::optional<DropNotice> &notice() const { return m_notice; }
    [[nodiscard]] bool isConverting() const { return m_items.running() > 0; }
    /// What the footer counts: over the whole list, not only the current batch.
    [[nodiscard]] Progress progress() const;

    // What a batch still holds, for tests.
    [[nodiscard]] const std::unordered_set<QUuid, UuidHash> &batch() const { return m_batch; }
    [[nodiscard]] const std::vector<std::filesystem::path> &batchOutputs() const { return m_batchOutputs; }
    [[nodiscard]] bool revealWhenBatchEnds() const { return m_revealWhenBatchEnds; }
    [[nodiscard]] std::size_t taskCount() const { return m_tasks.size(); }
    [[nodiscard]] std::size_t runCount() const { return m_runs.size(); }

    /// Gathers files into the list; starts no conversion and doesn't look at the disc.
    void add(const std::vector<std::filesystem::path> &urls);
    /// The same for what a screen was given; addresses that name no file of this machine are skipped.
    Q_INVOKABLE void add(const QList<QUrl> &urls);

    /// Changes a row's target and resets the row. A run under way goes on, and its end counts.
    void setTarget(DocumentFormat target, QUuid id);
    /// @param target  a raw value; one that means nothing changes nothing
    Q_INVOKABLE void setTarget(const QString &target, QUuid id);

    /// Takes a row out, and cancels its conversion.
    Q_INVOKABLE void remove(QUuid id);
    /// Takes all rows out, and cancels everything.
    Q_INVOKABLE void clear();

    /// Starts a batch over every row that is still to do.
    Q_INVOKABLE void convertAll();

    /// Shows a row's output in the file manager; nothing without one.
    Q_INVOKABLE void reveal(QUuid id);
    /// Opens a row's output with its default application; nothing without one.
    Q_INVOKABLE void open(QUuid id);

signals:
    void noticeChanged();
    void isConvertingChanged();
    void progressChanged();

private:
    [[nodiscard]] bool hasNotice() const { return m_notice.has_value(); }
    [[nodiscard]] int skipped() const { return m_notice.value_or(DropNotice{}).skipped; }
    [[nodiscard]] int duplicates() const { return m_notice.value_or(DropNotice{}).duplicates; }
    [[nodiscard]] int current() const { return progress().current; }
    [[nodiscard]] int total() const { return progress().total; }

    void add(const std::vector<std::filesystem::path> &urls, int skipped);
    void post(DropNotice notice);
    void setNotice(std::optional<DropNotice> notice);
    void convert(QUuid id);
    void cancelTask(QUuid id);
    void forget(QUuid id);
    void endBatch();
    void finish(QUuid id, int run, const ConvertItemModel::Mutation &mutation);
    void settle(QUuid id);
    void publish();

    const Surroundings m_surroundings;
    QPointer<AppSettings> m_settings;
    ConvertItemModel m_items;
    std::optional<DropNotice> m_notice;
    std::unique_ptr<Alarm> m_noticeTask;
    std::unordered_map<QUuid, std::stop_source, UuidHash> m_tasks;
    std::unordered_map<QUuid, int, UuidHash> m_runs; ///< the number of the latest run started
    std::unordered_set<QUuid, UuidHash> m_batch; ///< rows of the current batch that have not settled yet
    std::vector<std::filesystem::path> m_batchOutputs; ///< in settling order
    bool m_revealWhenBatchEnds = false;
    // What the screens were told last.
    bool m_publishedConverting = false;
    Progress m_publishedProgress;

    Mailbox m_mailbox;
    /// Last: ends, with all its threads, before what their results would touch.
    ConversionQueue m_queue;
};

} // namespace nolfa
