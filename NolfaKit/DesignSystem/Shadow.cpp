#include "DesignSystem/Shadow.h"

#include "DesignSystem/ShadowImage.h"

#include <QQuickWindow>
#include <QSGNinePatchNode>

namespace nolfa {

Shadow::Shadow(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void Shadow::setRadius(qreal radius)
{
    if (radius != m_radius) {
        m_radius = radius;
        lookAgain();
    }
}

void Shadow::setBlur(qreal blur)
{
    if (blur != m_blur) {
        m_blur = blur;
        lookAgain();
    }
}

void Shadow::setColor(const QColor &color)
{
    if (color != m_color) {
        m_color = color;
        lookAgain();
    }
}

void Shadow::lookAgain()
{
    emit lookChanged();
    update();
}

void Shadow::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        update();
}

QSGNode *Shadow::updatePaintNode(QSGNode *old, UpdatePaintNodeData * /*data*/)
{
    // The drawing is made anew with each update: cheap, and updates come with changes of size and look only.
    delete old;
    if (width() <= 0 || height() <= 0 || m_color.alpha() == 0)
        return nullptr;
    // What is soft needs no more: and Qt's software renderer puts the parts of a finer drawing in the wrong places.
    constexpr qreal scale = 1;
    const ShadowImage shadow = ShadowImage::of({m_radius, m_blur, m_color}, size(), scale);
    QSGNinePatchNode *node = window()->createNinePatchNode();
    node->setTexture(window()->createTextureFromImage(shadow.image, QQuickWindow::TextureHasAlphaChannel));
    node->setDevicePixelRatio(scale);
    node->setPadding(shadow.horizontalInset, shadow.verticalInset, shadow.horizontalInset, shadow.verticalInset);
    node->setBounds(boundingRect().adjusted(-shadow.margin, -shadow.margin, shadow.margin, shadow.margin));
    node->update();
    return node;
}

} // namespace nolfa
