#include "inspector/window/Screenshots.h"

#include "inspector/parts/Look.h"
#include "inspector/window/MainWindow.h"
#include "inspector/window/OldCache.h"
#include "inspector/window/PageList.h"
#include "inspector/window/ShownTexts.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int lookedEvery = 50; // milliseconds

/** Goes from scene to scene as the pages come to rest. */
class Photographer : public QObject
{
public:
    Photographer(MainWindow& window, const QString& folder)
        : QObject(&window)
        , m_window(window)
        , m_folder(folder)
    {
        QObject::connect(&m_window.host(), &ClientHost::sigTask, this, [this](const QString& task) {
            if (task.isEmpty() && !m_look.isActive())
                begin();
        });
        QObject::connect(&m_look, &QTimer::timeout, this, [this] { look(); });
    }

private:
    struct Shot
    {
        QString page;
        QString palette;
        Page::Scene scene;
    };

    void begin()
    {
        m_window.resize(1280, 800);
        if (m_window.host().hasOwnFolder())
            OldCache::leave();
        for (const QString& palette : {QStringLiteral("light"), QStringLiteral("dark")}) {
            for (const PageEntry& entry : pageList()) {
                const QString page = QString::fromLatin1(entry.name);
                const auto scenes = m_window.page(page)->scenes();
                for (const Page::Scene& scene : scenes)
                    m_shots.append({page, palette, scene});
            }
        }
        QDir().mkpath(m_folder);
        pose();
        m_look.start(lookedEvery);
    }

    void pose()
    {
        const Shot& shot = m_shots.first();
        Look::setPalette(shot.palette);
        m_window.show(shot.page);
        shot.scene.set();
        m_looks = 0;
    }

    void look()
    {
        // Pictures are asked for by the painting, and what they are asked for comes afterwards.
        m_window.grab();
        if (++m_looks < 4 || !m_window.pictures().isIdle() || !m_window.current()->isAtRest())
            return;
        const Shot shot = m_shots.takeFirst();
        const QString suffix = shot.palette == QLatin1String("dark") ? QStringLiteral("-dark.png")
                                                                     : QStringLiteral(".png");
        const QString name = shot.scene.name + suffix;
        written(name, m_window.grab().save(m_folder + u'/' + name));
        m_texts.insert(name, QJsonArray::fromStringList(ShownTexts::of(m_window)));
        if (!m_shots.isEmpty()) {
            pose();
            return;
        }
        m_look.stop();
        writeTexts();
        QApplication::exit(m_failed ? 1 : 0);
    }

    void writeTexts()
    {
        const QString name = QStringLiteral("texts.json");
        const QByteArray bytes = QJsonDocument(m_texts).toJson();
        QFile file(m_folder + u'/' + name);
        written(name,
                file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
                    && file.flush());
    }

    void written(const QString& name, bool done)
    {
        if (done)
            return;
        std::fprintf(stderr, "%s/%s cannot be written\n", qPrintable(m_folder), qPrintable(name));
        m_failed = true;
    }

    MainWindow& m_window;
    QString m_folder;
    QVector<Shot> m_shots;
    QJsonObject m_texts; ///< what can be read on each picture
    QTimer m_look;
    int m_looks = 0;
    bool m_failed = false;
};

} // namespace

void Screenshots::take(MainWindow& window, const QString& folder)
{
    new Photographer(window, folder);
}
