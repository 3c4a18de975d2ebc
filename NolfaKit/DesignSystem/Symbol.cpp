#include "DesignSystem/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace nolfa {

namespace {

constexpr int ordinarySize = 20;

QByteArray drawingNamed(const QString &name)
{
    QFile file(QStringLiteral(":/qt/qml/NolfaKit/DesignSystem/Symbols/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no symbol \"%s\".", qPrintable(name));
        return {};
    }
    return file.readAll();
}

} // namespace

Symbol::Symbol(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setImplicitSize(ordinarySize, ordinarySize);
    setAntialiasing(true);
}

void Symbol::setName(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    m_drawing = name.isEmpty() ? QByteArray() : drawingNamed(name);
    emit nameChanged();
    update();
}

void Symbol::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    emit colorChanged();
    update();
}

void Symbol::paint(QPainter *painter)
{
    if (m_drawing.isEmpty())
        return;
    QByteArray drawing = m_drawing;
    drawing.replace("currentColor", m_color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    painter->setOpacity(m_color.alphaF());
    renderer.render(painter, boundingRect());
}

} // namespace nolfa
