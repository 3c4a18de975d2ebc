#pragma once

#include "Engine/Fidelity.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <optional>
#include <string>
#include <vector>

namespace nolfa {

/// What may be expected of a format on its way to Markdown and back.
struct Expectation {
    DocumentFormat format;
    std::optional<ConversionCapability> toMarkdown;
    std::optional<ConversionCapability> fromMarkdown; ///< absent for what is only read

    /// As the capabilities of either way say.
    [[nodiscard]] bool isMacOnly() const;
    [[nodiscard]] bool requiresNetwork() const;

    /// All of it for who listens, in the language in force: the name, what it needs, and the tier of each way.
    [[nodiscard]] std::string summary() const;

    bool operator==(const Expectation &) const = default;
};

/// The table of the sheet that tells what conversions are worth, taken from `Fidelity` alone. Main thread only.
class ExpectationsModel : public QObject {
    Q_OBJECT
    /// One map a format: "name", "isMacOnly", "requiresNetwork", "toMarkdown" and "fromMarkdown" (raw values of a
    /// tier, or empty), "summary".
    Q_PROPERTY(QVariantList rows READ rowList NOTIFY textsChanged)
    Q_PROPERTY(QString directConversions READ directConversionsText NOTIFY textsChanged)

public:
    ExpectationsModel();

    /// The formats of the table: all but Markdown, in order.
    [[nodiscard]] const std::vector<DocumentFormat> &formats() const { return m_formats; }

    /// One row a format, in the language in force.
    [[nodiscard]] std::vector<Expectation> rows() const;

    /// The pairs that don't go through Markdown, each once, on one line; "⇄" where both ways exist.
    [[nodiscard]] static std::string directConversions();

    /// For whoever changed the language: every text is to be read anew.
    Q_INVOKABLE void refresh() { emit textsChanged(); }

signals:
    void textsChanged();

private:
    [[nodiscard]] QVariantList rowList() const;
    [[nodiscard]] static QString directConversionsText() { return QString::fromStdString(directConversions()); }

    const std::vector<DocumentFormat> m_formats;
};

} // namespace nolfa
