#pragma once

#include <QLabel>

class Pictures;

/** A picture of the cache in a frame, enlarged to it where it is smaller. */
class PictureBox : public QLabel
{
    Q_OBJECT

public:
    PictureBox(Pictures& pictures, const QSize& size, QWidget* parent = nullptr);

    void setPath(const QString& path);

    /** Of the picture itself, in pixels; empty until it is there. */
    QSize pictureSize() const { return m_pictureSize; }

Q_SIGNALS:
    void sigShown();

private:
    void look();

    Pictures& m_pictures;
    QString m_path;
    QSize m_pictureSize;
};
