#include "tidy/zTidyMgr.h"

#include "datatable/LogCategories.h"
#include "datatable/ZDataTableMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "gift/ZGiftListMgr.h"

#include <QCoreApplication>

zTidyMgr& zTidyMgr::getInstance()
{
    static zTidyMgr instance(nullptr);
    return instance;
}

zTidyMgr::zTidyMgr(QObject* parent)
    : QThread(parent)
{
    // What is made before this object is destroyed after it: a run may log until then.
    LogCategories::tidy();
    // Where the application ends before the process, the run ends while all else still stands; at
    // the end of the process some systems have killed the threads before they destroy the statics.
    qAddPostRoutine(&zTidyMgr::endRun);
}

zTidyMgr::~zTidyMgr()
{
    qRemovePostRoutine(&zTidyMgr::endRun);
    requestInterruption();
    wait();
}

void zTidyMgr::endRun()
{
    getInstance().requestInterruption();
    getInstance().wait();
}

void zTidyMgr::startThread()
{
    if (isRunning()) {
        qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread has running");
        return;
    }
    qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread start");
    m_datatable.setUseNames(ZDataTableMgr::getInstance()->getAllTableName());
    m_animation.setUseNames(ZGiftListMgr::getInstance()->getAllAnimationName());
    m_flash.setUseNames(ZFlashConfigMgr::getInstance().getAllFlashName());
    start(QThread::InheritPriority);
}

void zTidyMgr::run()
{
    qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread run start");
    m_datatable.tidy();
    m_animation.tidy();
    m_flash.tidy();
    m_flashext.tidy();
    if (!isInterruptionRequested())
        qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread run end");
}
