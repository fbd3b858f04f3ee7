#pragma once

#include "AbsRGBController.h"
#include "EffectsManager.h"
#include "support/capture/IDeskDuplManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QTemporaryDir>
#include <QUuid>

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
        QFile file("effects/" + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a test file");
    }
    /// A link, so that one library is not loaded as several.
    static void addPlugin(const QString& path)
    {
        if (!QFile::link(path, "effects/" + QFileInfo(path).fileName()))
            qFatal("cannot link a plug-in");
    }

private:
    QTemporaryDir m_folder;
    QString m_before;
};

/// Keeps the pictures it gets. Its id is new each time, so that no stored value of an earlier run matters.
class FakeController : public AbsRGBController
{
    Q_OBJECT

public:
    explicit FakeController(uint32_t nbLeds = 3)
        : AbsRGBController(nullptr)
    {
        m_options.id = m_options.model = QUuid::createUuid().toString(QUuid::WithoutBraces);
        m_options.nbLeds = nbLeds;
    }

    QString id() const { return m_options.id; }
    void update(QVector<LV_RGB> colors) override { pictures += colors; }
    void writeColors(const QVector<LV_RGB>&) override {}
    void rebuildHeader() override {}

    QVector<QVector<LV_RGB>> pictures;
};

class FakeDeskManager : public IDeskDuplManager
{
    Q_OBJECT

public:
    using IDeskDuplManager::IDeskDuplManager;

    QList<QString> allCapturer() override { return {}; }
    QString defaultCapturer() override { return {}; }
    QSharedPointer<IDeskCapture> acquireCapturer(QString) override { return {}; }
    void releaseCapturer(QString) override {}
    QString capturerDesc(QString) override { return {}; }
};

/// The manager with a capture service that touches no screen, and without colour straps.
class TestManager : public EffectsManager
{
    Q_OBJECT

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
        return deskManager = new FakeDeskManager(this);
    }
    IColorStrapManager* createColorStrapManager() override { return nullptr; }
};
