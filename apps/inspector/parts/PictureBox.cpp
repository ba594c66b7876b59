#include "inspector/parts/PictureBox.h"

#include "inspector/parts/Pictures.h"

PictureBox::PictureBox(Pictures& pictures, const QSize& size, QWidget* parent)
    : QLabel(parent)
    , m_pictures(pictures)
{
    setFixedSize(size);
    setAlignment(Qt::AlignCenter);
    setFrameShape(QFrame::StyledPanel);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    connect(&pictures, &Pictures::sigLoaded, this, [this](const QString& path) {
        if (path == m_path)
            look();
    });
}

void PictureBox::setPath(const QString& path)
{
    m_path = path;
    look();
}

void PictureBox::look()
{
    const qreal ratio = devicePixelRatioF();
    const QImage image = m_pictures.get(m_path, {}, size() * ratio);
    m_pictureSize = image.size();
    if (image.isNull()) {
        setText(m_pictures.fault(m_path));
    } else {
        QImage shown = image.scaled(size() * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        shown.setDevicePixelRatio(ratio);
        setPixmap(QPixmap::fromImage(shown));
    }
    Q_EMIT sigShown();
}
