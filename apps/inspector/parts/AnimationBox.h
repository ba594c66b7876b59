#pragma once

#include <QString>
#include <QWidget>

class FramePlayer;
class QLabel;
class QPushButton;

/** What moves, as its manager tells of it. */
struct Moving
{
    enum Kind {
        None,
        Archive, ///< path is its folder
        Picture, ///< path is its file in the cache of pictures
    };
    Kind kind = None;
    QString name;
    QString path;
    QString address;
};

/** Plays an animation that is on the disk; brings one that is not when somebody wants it, and
 * leaves films to the system's player. */
class AnimationBox : public QWidget
{
    Q_OBJECT

public:
    explicit AnimationBox(QWidget* parent = nullptr);

    void show(const Moving& moving);
    using QWidget::show;

    bool isAtRest() const;

public Q_SLOTS:
    void fetch();

Q_SIGNALS:
    /** Files have come. */
    void sigFetched();

private:
    bool isFilm() const;
    bool isThere() const;
    void play();
    void tell(const QString& fault);
    void fetched(const QString& fault);
    void openFilm();

    Moving m_moving;
    FramePlayer* m_player;
    QLabel* m_words;
    QPushButton* m_fetch;
    QPushButton* m_open;
    bool m_fetches = false;
};
