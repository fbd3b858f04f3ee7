#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QList>
#include <QString>
#include <memory>

namespace Ui {
class MediaSourceOptWidget;
}
class QLabel;

/// Chooses the source of the sound. Properties: "capturers", the list to choose from, and "captureId". The
/// list may change while it is shown: the choice stays on its identifier. What is set from outside
/// is not reported back.
class MediaSourceOptWidget : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit MediaSourceOptWidget(QWidget* parent);
    ~MediaSourceOptWidget() override;

    /// A further option below, in line with the source whatever the labels' widths. Takes both over.
    void addRow(QLabel* label, QWidget* option);

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void onDeviceSelectChanged(int idx);

private:
    QString currentId() const;
    void showCapturers(const QJsonValue& list);

    std::unique_ptr<Ui::MediaSourceOptWidget> m_ui;
    QList<QString> m_capturerIds; ///< in the order of the combo box
    QString m_chosenId;           ///< here, since the worker last said what is current
};
