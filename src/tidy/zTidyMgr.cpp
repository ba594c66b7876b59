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
    const Names names = namesInUse();
    m_datatable.setUseNames(names.tables);
    m_animation.setUseNames(names.animations);
    m_flash.setUseNames(names.flashes);
    m_isPlanning = false;
    start(QThread::InheritPriority);
}

bool zTidyMgr::startPlanning()
{
    if (isRunning())
        return false;
    m_planned = namesInUse();
    m_isPlanning = true;
    start(QThread::InheritPriority);
    return true;
}

zTidyMgr::Names zTidyMgr::namesInUse()
{
    return {ZDataTableMgr::getInstance()->getAllTableName(),
            ZGiftListMgr::getInstance()->getAllAnimationName(),
            ZFlashConfigMgr::getInstance().getAllFlashName()};
}

void zTidyMgr::makePlan()
{
    m_plan.clear();
    m_datatable.plan(m_planned.tables, m_plan);
    m_animation.plan(m_planned.animations, m_plan);
    m_flash.plan(m_planned.flashes, m_plan);
    m_flashext.plan(m_plan);
}

void zTidyMgr::run()
{
    if (m_isPlanning) {
        makePlan();
        return;
    }
    qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread run start");
    m_datatable.tidy();
    m_animation.tidy();
    m_flash.tidy();
    m_flashext.tidy();
    if (!isInterruptionRequested())
        qCInfo(LogCategories::tidy).noquote() << QStringLiteral("tidy thread run end");
}
