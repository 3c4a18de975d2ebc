#pragma once

#include "Nolfa/Features/Convert/ConvertItem.h"
#include "Nolfa/Features/Convert/DocumentConverting.h"

#include <QAbstractListModel>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace nolfa {

/// Lets identifiers key the standard containers.
struct UuidHash {
    std::size_t operator()(const QUuid &id) const { return qHash(id); }
};

/// The rows of the convert tool, in the order in which they were added, and what a screen shows of each. Main thread
/// only. Finding a row by its identifier takes constant time, so that a batch of thousands stays fluent.
class ConvertItemModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        ItemIdRole = Qt::UserRole + 1, ///< to name the row to ConvertViewModel
        NameRole, ///< the file's last component
        PathRole, ///< the whole path, as text
        SourceRole, ///< formats are raw values of DocumentFormat
        SourceNameRole,
        TargetRole,
        TargetNameRole,
        StateRole, ///< "idle", "running", "done" or "failed"
        MessageRole, ///< of a failure
        OutputRole, ///< the address of the file made, if there is one
        TierRole, ///< raw value of the capability's tier; empty without a capability
        TierLabelRole,
        NoteRole,
        IsMacOnlyRole,
        RequiresNetworkRole
    };
    Q_ENUM(Role)

    explicit ConvertItemModel(std::shared_ptr<const DocumentConverting> service, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// What a source can become, in order; raw values.
    Q_INVOKABLE [[nodiscard]] QStringList targets(const QString &source) const;

    [[nodiscard]] int count() const { return static_cast<int>(m_items.size()); }
    [[nodiscard]] const std::vector<ConvertItem> &items() const { return m_items; }
    [[nodiscard]] const ConvertItem *find(const QUuid &id) const;
    /// By plain equality.
    [[nodiscard]] bool containsURL(const std::filesystem::path &url) const;
    [[nodiscard]] int running() const { return m_running; }
    [[nodiscard]] int settled() const { return m_settled; }

    /// @param items  no url among them twice, none that is in the list
    void append(std::vector<ConvertItem> items);
    void remove(QUuid id);
    void clear();

    using Mutation = std::function<void(ConvertItem &)>;

    /// Does nothing if the row is gone. @p mutation leaves identifier and url alone.
    void update(const QUuid &id, const Mutation &mutation);
    /// The same for many rows, told to the screens in one signal.
    void update(const std::vector<QUuid> &ids, const Mutation &mutation);

    /// Tells the screens that every text is another one now.
    void retranslate();

signals:
    void countChanged();

private:
    [[nodiscard]] QVariant capabilityData(const ConvertItem &item, int role) const;
    std::optional<int> mutate(const QUuid &id, const Mutation &mutation);
    void count(const ConvertItem &item, int difference);
    void number(std::size_t first);

    std::shared_ptr<const DocumentConverting> m_service;
    std::vector<ConvertItem> m_items;
    std::unordered_map<QUuid, std::size_t, UuidHash> m_rows;
    std::unordered_set<std::string> m_urls; ///< native paths
    int m_running = 0;
    int m_settled = 0;
};

} // namespace nolfa
