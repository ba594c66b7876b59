#pragma once

#include "inspector/parts/SpaceLayout.h"
#include "inspector/parts/TidyVerdicts.h"

#include <QThreadPool>
#include <QWidget>

/** A folder of the cache as a picture: each entry as large as its size, in the colour of what
 *  tidying does with it. */
class SpaceMap : public QWidget
{
    Q_OBJECT

public:
    /** The verdicts outlive the map. */
    explicit SpaceMap(const TidyVerdicts& verdicts, QWidget* parent = nullptr);

    /** Shows a folder of a tree, laid out off the GUI thread. */
    void show(const CacheTree& tree, const CacheEntry& folder);

    /** Puts a frame around an entry. */
    void mark(const QString& path);

    /** The tile at a point, the innermost one; empty when there is none. */
    QString pathAt(const QPointF& point) const;

    static QColor colourOf(TidyVerdict::State state, const QPalette& palette);

Q_SIGNALS:
    /** A click on an entry, or two. */
    void sigSelected(const QString& path);
    void sigActivated(const QString& path);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void paintTile(QPainter& painter, const SpaceTile& tile) const;
    const SpaceTile* tileAt(const QPointF& point) const;

    const TidyVerdicts& m_verdicts;
    CacheTree m_tree;
    const CacheEntry* m_folder = nullptr; // of the tree
    CacheTree m_laidOut;                  // what the tiles are of
    QVector<SpaceTile> m_tiles;
    QString m_marked;
    int m_layout = 0;
    QThreadPool m_pool;
};
