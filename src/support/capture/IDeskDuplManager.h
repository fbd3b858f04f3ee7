#pragma once

#include "support/SharedLibrary.h"
#include "support/capture/IDeskCapture.h"
#include "support/capture/SourceTrouble.h"

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/// Lists the desktop's picture sources and shares one capture among all who acquire it.
class LUMIVAR_SUPPORT_EXPORT IDeskDuplManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QList<QString> allCapturer() = 0;
    virtual QString defaultCapturer() = 0;
    /// Null on failure. Each acquire is matched by one release.
    virtual QSharedPointer<IDeskCapture> acquireCapturer(QString id) = 0;
    virtual void releaseCapturer(QString id) = 0;
    /// The text for people.
    virtual QString capturerDesc(QString id) = 0;
    /// Somebody wants sources, which the user may have to be asked for. Any thread; the answer comes as
    /// capturerReady, or as capturersChanged and another trouble.
    virtual void requestSources(SourceRequest) {}
    /// Why the list is empty.
    virtual SourceTrouble sourceTrouble() { return SourceTrouble::None; }
    /// False for what only another way to read the desktop can list.
    virtual bool isOfPresentMode(const QString&) { return true; }

signals:
    void capturerReady(QString id);
    void capturerFailed(QString id);
    /// The list, its order, a text in it or the reason why it is empty is another now; comes after the
    /// signals above.
    void capturersChanged();
    /// The user has chosen another way to read the desktop: who has no source may ask for one, him too.
    void modeChanged();
};
Q_DECLARE_METATYPE(IDeskDuplManager*)
