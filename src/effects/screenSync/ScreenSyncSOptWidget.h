#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QList>
#include <QString>
#include <memory>

namespace Ui {
class ScreenSyncSOptWidget;
}

/// Options of the screen effects: the source, range and saturation of the colours, removal of black edges. A
/// row shows only while there is something to set; without any the widget hides and asks its host to do the
/// same. What is set from outside is not reported back. A source that is not in the list is logged and
/// changes nothing, values of a wrong type are ignored.
class ScreenSyncSOptWidget : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ScreenSyncSOptWidget(QWidget* parent);
    ~ScreenSyncSOptWidget() override;

    QJsonValue effectProperty(const QString& key) override;
    void setEffectProperty(const QString& key, const QJsonValue& val) override;

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void onComboBoxChanged(int idx);
    void onSaturationChanged(int value);
    void onBlurChanged(int value);
    void onWipeDarkSideCBXChanged(bool b);

private:
    void listProperties();
    void connectForm();
    void showCaptures(const QJsonValue& list);
    void showSource(const QString& id);
    void followAdvancedMode();
    void updateRows();

    std::unique_ptr<Ui::ScreenSyncSOptWidget> m_ui;
    QList<QString> m_captures; ///< identifiers, in the order of the combo box
    bool m_enbWipeDarkSide = false;
    bool m_showSources = false;
    bool m_enbAdjust = false;
    QString m_chosenId; ///< here, since the worker last said what is current
};
