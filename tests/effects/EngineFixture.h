#pragma once

#include "FakeController.h"
#include "FakeDeskDuplManager.h"
#include "ProgramUnderTest.h"
#include "effects/EffectsManager.h"

#include <QPointer>

/// A working directory of its own with a folder `effects`, left again at the end.
class WorkingFolder
{
public:
    WorkingFolder()
        : m_before(QDir::currentPath())
    {
        QDir(m_folder.path()).mkdir("effects");
        QDir::setCurrent(m_folder.path());
    }
    ~WorkingFolder() { QDir::setCurrent(m_before); }

    static void writeFile(const QString& name, const QByteArray& bytes)
    {
        ProgramUnderTest::writeFile("effects/" + name, bytes);
    }
    /// A link, so that one library is not loaded as several; where a link is no library, a copy.
    static void addPlugin(const QString& path)
    {
        const auto add = path.endsWith(".dll") ? qOverload<const QString&, const QString&>(&QFile::copy)
                                               : qOverload<const QString&, const QString&>(&QFile::link);
        if (!add(path, "effects/" + QFileInfo(path).fileName()))
            qFatal("cannot add a plug-in");
    }

private:
    QTemporaryDir m_folder;
    QString m_before;
};

/// The manager with a capture service that touches no screen, and without colour straps.
class TestManager : public EffectsManager
{
public:
    TestManager()
        : EffectsManager(nullptr)
    {
    }

    int deskManagersMade = 0;
    QPointer<IDeskDuplManager> deskManager;

protected:
    IDeskDuplManager* createDeskDuplManager() override
    {
        ++deskManagersMade;
        return deskManager = new FakeDeskDuplManager(this);
    }
    IColorStrapManager* createColorStrapManager() override { return nullptr; }
};
