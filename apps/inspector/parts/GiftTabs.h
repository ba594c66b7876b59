#pragma once

#include <QStringList>
#include <QTabBar>
#include <QVector>

class Pictures;

/** The tabs of the gift panel, with their icons and how many gifts each has; the first has all. */
class GiftTabs : public QTabBar
{
    Q_OBJECT

public:
    static constexpr int all = -1; ///< stands for every tab

    explicit GiftTabs(Pictures& pictures, QWidget* parent = nullptr);

    /** Looks anew at what the gifts say. */
    void take();

    /** The number of the tab that is chosen, as gifts have it, or all. */
    int tab() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Tab
    {
        int number = all;
        int gifts = 0;
        QStringList icons; // that its gifts name, without those named before
        QString path;      // of the first of them, and where it comes from
        QString address;
    };

    void show(int place, const Tab& tab);
    void showIcon(int place);

    Pictures& m_pictures;
    QVector<Tab> m_shown;
};
