#pragma once

#include "inspector/parts/CacheScan.h"
#include "inspector/parts/Page.h"
#include "inspector/parts/TidyVerdicts.h"

#include <QTimer>

class CacheEntries;
class FilterModel;
class QLabel;
class QPushButton;
class RecordView;
class SpaceMap;

/** What is in the cache, how much room it takes, and what tidying does with it. */
class CachePage : public Page
{
    Q_OBJECT

public:
    explicit CachePage(const Inspected& inspected, QWidget* parent = nullptr);

    void refresh() override;
    /** A file or folder, by its path from the working folder. */
    void open(const QString& thing) override;
    QString opened() const override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override { return m_tree != nullptr && !m_isPlanning; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeTop();
    QWidget* makeFolders();
    QWidget* makeEntries();
    QWidget* makeRun(LogModel& log);
    void connectHost();

    void look();
    void plan();
    void judge();
    void fitColumns();
    void take(const CacheTree& tree);
    void showFolder(const QString& path);
    const CacheEntry* current() const;
    void select(const QString& path);
    void enter(const QString& path);

    /** Looks which of what is to go has gone. */
    void follow(bool isLast);

    ClientHost& m_host;
    TidyVerdicts m_verdicts;
    CacheTree m_tree;
    QString m_shown; // path of a folder of the tree
    CacheEntries* m_folders;
    RecordView* m_folderView;
    CacheEntries* m_entries;
    FilterModel* m_filter;
    RecordView* m_view;
    SpaceMap* m_map;
    QLabel* m_place;
    QPushButton* m_up;
    QLabel* m_summary;
    QTimer m_following;
    int m_removed = 0; // of what is to go, before the task that is under way
    int m_reading = 0;
    bool m_isPlanning = false;
    bool m_isStale = false; // the plan that is being made
};
