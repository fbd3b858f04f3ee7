#pragma once

#include "support/capture/IDeskCapture.h"

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/// Lists the desktop's picture sources and shares one capture among all who acquire it.
class IDeskDuplManager : public QObject
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

signals:
    void capturerReady(QString id);
    void capturerFailed(QString id);
    /// The list, its order or a text in it is another now; comes after the signals above.
    void capturersChanged();
};
Q_DECLARE_METATYPE(IDeskDuplManager*)
