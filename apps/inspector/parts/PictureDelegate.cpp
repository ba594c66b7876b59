#include "inspector/parts/PictureDelegate.h"

#include "inspector/parts/Pictures.h"

#include <QAbstractItemView>

PictureDelegate::PictureDelegate(Pictures& pictures, int pathRole, int addressRole,
                                 const QSize& size, QAbstractItemView* view)
    : QStyledItemDelegate(view)
    , m_pictures(pictures)
    , m_pathRole(pathRole)
    , m_addressRole(addressRole)
    , m_size(size)
{
    view->setIconSize(size);
    connect(&pictures, &Pictures::sigLoaded, view->viewport(), QOverload<>::of(&QWidget::update));
}

void PictureDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const qreal ratio = option->widget == nullptr ? 1 : option->widget->devicePixelRatioF();
    QImage image = m_pictures.get(index.data(m_pathRole).toString(),
                                  index.data(m_addressRole).toString(), m_size * ratio);
    image.setDevicePixelRatio(ratio);
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = m_size; // the text stays where it is when the picture comes
    option->icon = image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}
