#pragma once

#include "inspector/parts/Page.h"
#include "inspector/parts/Tiles.h"

#include <QTimer>
#include <QVector>

#include <functional>

class AnimationBox;
class DerivedColumn;
class PictureBox;
class QLabel;
class QPushButton;
class QTabWidget;
class SearchBox;
class ZRecordModel;
struct Moving;

/** How the client is dressed: skin, ranks of nobility, effects. */
class LookPage : public Page
{
    Q_OBJECT

public:
    explicit LookPage(const Inspected& inspected, QWidget* parent = nullptr);

    void refresh() override;
    /** "skin", "nobility", "flash", "awards" or "recreation", and what to select: "nobility/3". */
    void open(const QString& thing) override;
    QString opened() const override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override;

private:
    /** A picture of the skin with what is to be said of it. */
    struct SkinPart
    {
        int place; ///< ZPCSkinMgr::E_SkinLocate
        PictureBox* picture;
        QLabel* told;
    };

    void makeSkin(Pictures& pictures);
    QWidget* makeSkinPart(Pictures& pictures, int place, const QString& title, const QSize& size);
    void makeNobility(Pictures& pictures);
    void makeFlash();
    void makeAwards(Pictures& pictures);
    void makeRecreation(Pictures& pictures);

    QAbstractItemView* makeTable(QAbstractItemModel* rows, const QString& table);
    QAbstractItemView* makeTiles(ZRecordModel* records, Pictures& pictures,
                                 const TileDelegate::TileOf& tileOf);
    void lead(QAbstractItemView* view, const QString& table);
    QWidget* withAnimation(QWidget* shown, QAbstractItemView* view,
                           const std::function<Moving(const QString& key)>& movingOf);
    void addTab(const char* name, const QString& title, QWidget* widget, QAbstractItemView* view);

    void showSkin();
    void fetchSkin();
    void tellSkin(const SkinPart& part) const;
    void fetchFlashes();
    void tellPrivileges();
    int rank() const;

    ClientHost& m_host;
    Pictures& m_pictures;
    QTabWidget* m_tabs;
    SearchBox* m_search;
    QVector<QAbstractItemView*> m_views; // by tab
    QVector<AnimationBox*> m_animations;
    QVector<DerivedColumn*> m_derived;
    QVector<SkinPart> m_skin;
    bool m_triedSkin = false;
    QTimer m_skinComes; // runs while the skin's pictures are waited for
    QAbstractItemView* m_ranks = nullptr;
    QAbstractItemView* m_privileges = nullptr;
    QLabel* m_told;
    QPushButton* m_fetchFlashes;
};
