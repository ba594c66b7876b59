#pragma once

#include "ZGlobalExport.h"
#include "tidy/zTidyAnimation.h"
#include "tidy/zTidyDatatable.h"
#include "tidy/zTidyFlash.h"
#include "tidy/zTidyFlashext.h"

#include <QThread>

/**
 * The thread that removes stale files from the cache below the working directory: table files that
 * are not current, animation folders that no gift uses, superseded flash animations, downloaded
 * archives and temporary files.
 *
 * Nothing that was modified in the last seven days is removed; that is all that protects what is
 * being downloaded meanwhile. The log tells what was removed and why. After each entry the thread
 * rests for a millisecond, so a run takes its time.
 *
 * A run cannot be stopped, but for the end of the application or of the process: then it ends
 * within one file's removal, without its closing log lines, and that is waited for.
 */
class ZGLOBAL_EXPORT zTidyMgr : public QThread
{
    Q_OBJECT

public:
    static zTidyMgr& getInstance();

    /**
     * Starts a run with what ZDataTableMgr, ZGiftListMgr and ZFlashConfigMgr now have in use; while
     * one is in progress, only says so in the log. GUI thread only.
     */
    void startThread();

    /**
     * Starts to find out what a run would do now, and why; nothing is removed or logged. QThread::
     * finished() comes when plan() has it. False, and nothing started, while the thread is busy;
     * no run starts either while it is busy with this, which takes no longer than looking at each
     * file once. GUI thread only.
     */
    bool startPlanning();

    /** What the last planning found. GUI thread only, and not while the thread is busy. */
    const TidyPlan& plan() const { return m_plan; }

protected:
    void run() override;

private:
    explicit zTidyMgr(QObject* parent);
    ~zTidyMgr() override;

    static void endRun();
    void makePlan();

    struct Names
    {
        QStringList tables;
        QSet<QString> animations;
        QStringList flashes;
    };
    static Names namesInUse();

    zTidyDatatable m_datatable;
    zTidyAnimation m_animation;
    zTidyFlash m_flash;
    zTidyFlashext m_flashext;
    bool m_isPlanning = false;
    Names m_planned; // what is in use as the plan has it
    TidyPlan m_plan;
};
