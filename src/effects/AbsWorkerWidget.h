#pragma once

#include "support/SharedLibrary.h"

#include <QJsonValue>
#include <QWidget>

/// Base of every option widget; uses the same property keys as the worker it configures.
class LUMIVAR_EFFECTS_EXPORT AbsWorkerWidget : public QWidget
{
    Q_OBJECT

public:
    explicit AbsWorkerWidget(QWidget* parent);

    virtual void setEffectProperty(const QString& key, const QJsonValue& val) = 0;
    virtual QJsonValue effectProperty(const QString& key) = 0;

signals:
    void effectPropertyChanged(QString key, QJsonValue val);
    /// The height in pixels that the widget needs.
    void miniHeightChanged(int h);
    /// Asks the host to show or hide the widget's slot.
    void visibleStatusChanged(bool visible);
};
