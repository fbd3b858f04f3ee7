#pragma once

#include "effects/AbsWorkerWidget.h"

class MediaSourceOptWidget;
class QLabel;
class QSlider;

/// Options of the level meters: the source of the sound and property "strength", the common gain.
class MMSOptWidget : public AbsWorkerWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit MMSOptWidget(QWidget* parent);

    /// Never reported back: the slider knows fewer strengths than the worker.
    void setEffectProperty(const QString& key, const QJsonValue& val) override;
    QJsonValue effectProperty(const QString& key) override;

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void onStrengthSliderChanged(int value);

private:
    void retranslate();
    void showStrength(const QJsonValue& strength);

    MediaSourceOptWidget* m_mediaSource = nullptr;
    QLabel* m_strengthLabel = nullptr;
    QSlider* m_strengthSlider = nullptr;
};
