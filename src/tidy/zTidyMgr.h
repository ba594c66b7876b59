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

protected:
    void run() override;

private:
    explicit zTidyMgr(QObject* parent);
    ~zTidyMgr() override;

    static void endRun();

    zTidyDatatable m_datatable;
    zTidyAnimation m_animation;
    zTidyFlash m_flash;
    zTidyFlashext m_flashext;
};
