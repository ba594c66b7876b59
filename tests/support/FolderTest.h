#pragma once

#include "testing/ZTestFolder.h"

#include <QObject>

#include <memory>

/** A test whose functions have a working folder of their own, each. */
class FolderTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init() { m_folder = std::make_unique<ZTestFolder>(); }
    void cleanup() { m_folder.reset(); }

private:
    std::unique_ptr<ZTestFolder> m_folder;
};
