#include "Nolfa/Features/Convert/ConvertItemModel.h"

#include "Engine/Fidelity.h"
#include "Engine/FileName.h"
#include "Nolfa/Support/FileURL.h"

#include <QUrl>
#include <algorithm>
#include <iterator>

namespace nolfa {

namespace {

QString toText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

ConvertItemModel::ConvertItemModel(std::shared_ptr<const DocumentConverting> service, QObject *parent)
    : QAbstractListModel(parent)
    , m_service(std::move(service))
{
}

int ConvertItemModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ConvertItemModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ConvertItem &item = m_items[static_cast<std::size_t>(index.row())];
    switch (role) {
    case ItemIdRole:
        return QVariant::fromValue(item.id);
    case NameRole:
        return toText(FileName::display(item.url));
    case PathRole:
        return QString::fromStdString(item.url.native());
    case SourceRole:
        return toText(rawValue(item.source));
    case SourceNameRole:
        return toText(displayName(item.source));
    case TargetRole:
        return toText(rawValue(item.target));
    case TargetNameRole:
        return toText(displayName(item.target));
    case StateRole:
        return QString::fromLatin1(item.state.name());
    case MessageRole:
        return toText(item.state.message());
    case OutputRole:
        return item.output ? QVariant(FileURL::fromPath(*item.output)) : QVariant();
    default:
        return capabilityData(item, role);
    }
}

QVariant ConvertItemModel::capabilityData(const ConvertItem &item, int role) const
{
    const std::optional<ConversionCapability> capability = Fidelity::capability(item.source, item.target);
    switch (role) {
    case TierRole:
        return capability ? toText(rawValue(capability->tier)) : QString();
    case TierLabelRole:
        return capability ? toText(label(capability->tier)) : QString();
    case NoteRole:
        return capability && capability->note ? toText(*capability->note) : QString();
    case IsMacOnlyRole:
        return capability && capability->isMacOnly;
    case RequiresNetworkRole:
        return capability && capability->requiresNetwork;
    default:
        return {};
    }
}

QHash<int, QByteArray> ConvertItemModel::roleNames() const
{
    return {{ItemIdRole, "itemId"}, {NameRole, "name"}, {PathRole, "path"}, {SourceRole, "source"},
        {SourceNameRole, "sourceName"}, {TargetRole, "target"}, {TargetNameRole, "targetName"},
        {StateRole, "itemState"}, {MessageRole, "message"}, {OutputRole, "output"}, {TierRole, "tier"},
        {TierLabelRole, "tierLabel"}, {NoteRole, "note"}, {IsMacOnlyRole, "isMacOnly"},
        {RequiresNetworkRole, "requiresNetwork"}};
}

QStringList ConvertItemModel::targets(const QString &source) const
{
    QStringList texts;
    if (const std::optional<DocumentFormat> format = DocumentFormats::fromRawValue(source.toStdString())) {
        for (const DocumentFormat target : m_service->supportedTargets(*format))
            texts.append(toText(rawValue(target)));
    }
    return texts;
}

const ConvertItem *ConvertItemModel::find(const QUuid &id) const
{
    const auto row = m_rows.find(id);
    return row == m_rows.end() ? nullptr : &m_items[row->second];
}

bool ConvertItemModel::containsURL(const std::filesystem::path &url) const
{
    return m_urls.contains(url.native());
}

void ConvertItemModel::append(std::vector<ConvertItem> items)
{
    if (items.empty())
        return;
    const std::size_t first = m_items.size();
    beginInsertRows({}, count(), count() + static_cast<int>(items.size()) - 1);
    std::ranges::move(items, std::back_inserter(m_items));
    for (std::size_t row = first; row < m_items.size(); ++row) {
        count(m_items[row], 1);
        m_urls.insert(m_items[row].url.native());
    }
    number(first);
    endInsertRows();
    emit countChanged();
}

void ConvertItemModel::remove(QUuid id)
{
    const auto place = m_rows.find(id);
    if (place == m_rows.end())
        return;
    const std::size_t row = place->second;
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    count(m_items[row], -1);
    m_urls.erase(m_items[row].url.native());
    m_rows.erase(place);
    m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(row));
    number(row);
    endRemoveRows();
    emit countChanged();
}

void ConvertItemModel::clear()
{
    if (m_items.empty())
        return;
    beginRemoveRows({}, 0, count() - 1);
    m_items.clear();
    m_rows.clear();
    m_urls.clear();
    m_running = 0;
    m_settled = 0;
    endRemoveRows();
    emit countChanged();
}

void ConvertItemModel::update(const QUuid &id, const Mutation &mutation)
{
    if (const std::optional<int> row = mutate(id, mutation))
        emit dataChanged(index(*row), index(*row));
}

void ConvertItemModel::update(const std::vector<QUuid> &ids, const Mutation &mutation)
{
    int first = count();
    int last = -1;
    for (const QUuid &id : ids) {
        if (const std::optional<int> row = mutate(id, mutation)) {
            first = std::min(first, *row);
            last = std::max(last, *row);
        }
    }
    if (first <= last)
        emit dataChanged(index(first), index(last));
}

std::optional<int> ConvertItemModel::mutate(const QUuid &id, const Mutation &mutation)
{
    const auto row = m_rows.find(id);
    if (row == m_rows.end())
        return std::nullopt;
    ConvertItem &item = m_items[row->second];
    count(item, -1);
    mutation(item);
    count(item, 1);
    return static_cast<int>(row->second);
}

void ConvertItemModel::retranslate()
{
    if (m_items.empty())
        return;
    emit dataChanged(
        index(0), index(count() - 1), {SourceNameRole, TargetNameRole, MessageRole, TierLabelRole, NoteRole});
}

void ConvertItemModel::count(const ConvertItem &item, int difference)
{
    if (item.is(ConvertItem::State::Case::running))
        m_running += difference;
    if (item.isSettled())
        m_settled += difference;
}

void ConvertItemModel::number(std::size_t first)
{
    for (std::size_t row = first; row < m_items.size(); ++row)
        m_rows[m_items[row].id] = row;
}

} // namespace nolfa
