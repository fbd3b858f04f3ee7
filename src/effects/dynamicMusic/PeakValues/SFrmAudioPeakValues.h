#pragma once

#include "effects/AbsWorkerWidget.h"

class MediaSourceOptWidget;

/// Options of the peak effects: the source of the sound, nothing else.
class SFrmAudioPeakValues : public AbsWorkerWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SFrmAudioPeakValues(QWidget* parent);

    void setEffectProperty(const QString& key, const QJsonValue& val) override;
    QJsonValue effectProperty(const QString& key) override;

private:
    MediaSourceOptWidget* m_mediaSource = nullptr;
};
