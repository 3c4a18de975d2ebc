#include "Nolfa/Support/ScreenStage.h"

#include "DesignSystem/Language.h"
#include "Engine/ConversionError.h"
#include "Engine/Fidelity.h"

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QQuickItem>
#include <QSettings>

namespace nolfa::testing {

namespace {

/// Offers every pair that the user is told about. A deck becomes a text only, so that a row without a choice is there.
class StagedService : public HeldService {
public:
    [[nodiscard]] std::vector<DocumentFormat> supportedTargets(DocumentFormat source) const override
    {
        if (source == DocumentFormat::pptx)
            return {DocumentFormat::markdown};
        std::vector<DocumentFormat> targets;
        for (const DocumentFormat target : DocumentFormats::allCases) {
            if (target != source && Fidelity::capability(source, target))
                targets.push_back(target);
        }
        return targets;
    }
};

QString nameOf(const std::filesystem::path &path)
{
    return QString::fromStdString(path.filename().native());
}

} // namespace

ScreenStage::ScreenStage()
    : m_usualTextSize(QGuiApplication::font().pointSizeF())
{
    restart();
}

ScreenStage::~ScreenStage() = default;

void ScreenStage::restart()
{
    m_last = std::move(m_app);
    m_service = std::make_shared<StagedService>();
    m_desktop = std::make_shared<RecordingDesktop>();
    const std::filesystem::path file = m_folder / ("settings" + std::to_string(++m_starts) + ".ini");
    auto defaults = std::make_unique<QSettings>(QString::fromStdString(file.native()), QSettings::IniFormat);
    defaults->setValue("nolfa.language", "en");
    m_app = std::make_unique<AppModel>(std::move(defaults),
        ConvertViewModel::Surroundings{
            .service = m_service, .clock = m_clock, .desktop = m_desktop, .maxConcurrent = 2});
    connect(m_app->settings(), &AppSettings::languageChanged, &Language::shared(), &Language::refresh);
    Language::shared().refresh();
    emit appChanged();
}

QStringList ScreenStage::revealed() const
{
    QStringList names;
    for (const auto &files : m_desktop->revealed) {
        for (const std::filesystem::path &file : files)
            names << nameOf(file);
    }
    return names;
}

QStringList ScreenStage::opened() const
{
    QStringList names;
    for (const std::filesystem::path &file : m_desktop->opened)
        names << nameOf(file);
    return names;
}

QStringList ScreenStage::calls() const
{
    QStringList texts;
    for (const HeldService::Call &call : m_service->calls())
        texts << nameOf(call.input) + " > " + QString::fromStdString(std::string(rawValue(call.target)));
    return texts;
}

QList<QUrl> ScreenStage::urls(const QStringList &names) const
{
    QList<QUrl> list;
    for (const QString &name : names)
        list << QUrl::fromLocalFile("/home/claire/Documents/" + name);
    return list;
}

void ScreenStage::add(const QStringList &names)
{
    m_app->convert()->add(urls(names));
}

void ScreenStage::succeed(const QString &name, const QString &output)
{
    m_service->succeed(name.toStdString(), "/home/claire/Documents/" + output.toStdString());
}

void ScreenStage::failLocked(const QString &name)
{
    m_service->fail(name.toStdString(), ConversionError::passwordProtected(name.toStdString()));
}

namespace {

std::unique_ptr<QMimeData> mimeOf(const QList<QUrl> &urls)
{
    auto data = std::make_unique<QMimeData>();
    data->setUrls(urls);
    return data;
}

QPoint placeOf(QQuickItem *over, double x, double y)
{
    return over->mapToScene(QPointF(x, y)).toPoint();
}

} // namespace

void ScreenStage::dragEnter(QQuickItem *over, double x, double y, const QList<QUrl> &urls)
{
    const auto data = mimeOf(urls);
    QDragEnterEvent event(placeOf(over, x, y), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(over->window(), &event);
}

void ScreenStage::dragLeave(QQuickItem *over)
{
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(over->window(), &event);
}

bool ScreenStage::drop(QQuickItem *over, double x, double y, const QList<QUrl> &urls)
{
    const auto data = mimeOf(urls);
    dragEnter(over, x, y, urls);
    QDropEvent event(placeOf(over, x, y), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(over->window(), &event);
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

void ScreenStage::setTextSize(double points)
{
    QFont font = QGuiApplication::font();
    font.setPointSizeF(points > 0 ? points : m_usualTextSize);
    QGuiApplication::setFont(font);
}

} // namespace nolfa::testing
