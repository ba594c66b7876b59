#include "inspector/parts/AnimationBox.h"

#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "inspector/parts/FramePlayer.h"

#include <QDesktopServices>
#include <QDir>
#include <QPointer>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

AnimationBox::AnimationBox(QWidget* parent)
    : QWidget(parent)
    , m_player(new FramePlayer)
    , m_words(new QLabel)
    , m_fetch(new QPushButton(tr("&Fetch the animation")))
    , m_open(new QPushButton(tr("Show the &film")))
{
    m_player->setFixedSize(128, 128);
    m_words->setObjectName(QStringLiteral("animation"));
    m_words->setWordWrap(true);
    m_words->setTextFormat(Qt::PlainText);
    m_words->setAlignment(Qt::AlignCenter);
    m_fetch->setObjectName(QStringLiteral("fetch"));
    m_open->setObjectName(QStringLiteral("film"));
    m_open->setToolTip(tr("In the browser or player of this machine"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_player, 0, Qt::AlignHCenter);
    layout->addWidget(m_words);
    layout->addWidget(m_fetch, 0, Qt::AlignHCenter);
    layout->addWidget(m_open, 0, Qt::AlignHCenter);
    connect(m_player, &FramePlayer::sigRead, this, &AnimationBox::tell);
    connect(m_fetch, &QPushButton::clicked, this, &AnimationBox::fetch);
    connect(m_open, &QPushButton::clicked, this, &AnimationBox::openFilm);
    show(Moving());
}

void AnimationBox::show(const Moving& moving)
{
    m_moving = moving;
    setVisible(moving.kind != Moving::None);
    play();
}

bool AnimationBox::isAtRest() const
{
    return !m_fetches && !m_player->isReading();
}

void AnimationBox::fetch()
{
    if (m_fetches || m_moving.kind == Moving::None || isFilm() || isThere())
        return;
    m_fetches = true;
    m_fetch->setEnabled(false);
    const QPointer<AnimationBox> self(this);
    const auto done = [self, path = m_moving.path](const QString& fault) {
        if (self == nullptr)
            return;
        self->m_fetches = false;
        self->m_fetch->setEnabled(true);
        if (self->m_moving.path == path)
            self->fetched(fault);
    };
    if (m_moving.kind == Moving::Archive)
        Animations::fetch(m_moving.path, m_moving.address, this, done);
    else
        ZImageCacheUtil::preloadList({m_moving.address})
            .then([done] { done({}); })
            .fail([done](const zErrorInfo& error) { done(error.message()); });
}

bool AnimationBox::isFilm() const
{
    return m_moving.name.endsWith(QLatin1String(".mp4"));
}

bool AnimationBox::isThere() const
{
    return m_moving.kind == Moving::Archive ? Animations::isThere(m_moving.path)
                                            : QFileInfo(m_moving.path).size() > 0;
}

void AnimationBox::play()
{
    const bool is = m_moving.kind != Moving::None && !isFilm();
    const bool plays = is && isThere();
    const auto read =
        m_moving.kind == Moving::Archive ? &Animations::read : &Animations::readPicture;
    const QString place = QDir(m_moving.path).absolutePath(); // for another thread
    m_player->play(
        plays ? FramePlayer::Read([read, place](const QSize& size) { return read(place, size); })
              : FramePlayer::Read());
    m_player->setVisible(plays);
    m_fetch->setVisible(is && !plays);
    m_open->setVisible(isFilm() && !m_moving.address.isEmpty());
    m_words->setText(isFilm()    ? tr("%1 is a film, which is not played here.").arg(m_moving.name)
                         : plays ? m_moving.name
                                 : tr("%1 is not on the disk.").arg(m_moving.name));
}

void AnimationBox::tell(const QString& fault)
{
    m_words->setText(
        fault.isEmpty()
            ? tr("%1, %2 frames").arg(m_moving.name, QString::number(m_player->frames()))
            : fault);
}

void AnimationBox::fetched(const QString& fault)
{
    play();
    if (!fault.isEmpty())
        m_words->setText(fault);
    Q_EMIT sigFetched();
}

void AnimationBox::openFilm()
{
    if (!QDesktopServices::openUrl(QUrl(m_moving.address)))
        m_words->setText(tr("Nothing on this machine opens %1").arg(m_moving.address));
}
