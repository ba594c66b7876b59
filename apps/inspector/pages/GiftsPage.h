#pragma once

#include "inspector/parts/Page.h"

#include <QTimer>

class AnimationBox;
class ExplanationView;
class GiftTabs;
class QComboBox;
class QLabel;
class RawTables;
class SearchBox;
class TileView;
class TimeSlider;
class ZGiftModel;

/** The gift panel at a moment: which gifts can be sent then, and for each that cannot the rule that
 *  says no; beside it the selected gift with its animation. */
class GiftsPage : public Page
{
    Q_OBJECT

public:
    explicit GiftsPage(const Inspected& inspected, QWidget* parent = nullptr);

    /** A gift by its id. */
    void open(const QString& thing) override;
    QString opened() const override;
    void refresh() override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override;

private:
    class Panel;

    QWidget* makeTop();
    QWidget* makeTiles(const Inspected& inspected);
    QWidget* makeGift();
    void readTable();
    void setTime(qint64 seconds);
    void filter();
    void count();
    void select(const QModelIndex& shown);
    void play();
    void explain();

    ClientHost& m_host;
    RawTables& m_files;
    ZGiftModel* m_gifts;
    Panel* m_panel;
    TileView* m_view;
    GiftTabs* m_tabs;
    QComboBox* m_shown;
    SearchBox* m_search;
    TimeSlider* m_time;
    QLabel* m_count;
    AnimationBox* m_animation;
    ExplanationView* m_explanation;
    QTimer m_explain; // once, however fast the slider moves
    QString m_selected;
    bool m_filters = false;
};
