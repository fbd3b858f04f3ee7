#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QList>
#include <QSet>
#include <QString>
#include <memory>

class QComboBox;
class QLabel;

namespace Ui {
class ScreenSyncSOptWidget;
}

/// Options of the screen effects: the source, range and saturation of the colours, removal of black edges
/// and, where the worker knows them, how edges are found, smoothing, the protection of greys and the frame
/// rate. A row shows only while there is something to set; without any the widget hides and asks its host to
/// do the same. What is set from outside is not reported back. A source that is not in the list is logged and
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
    /// One that shows in advanced mode, and only while the worker has told its value: others may not know it.
    struct LookRow
    {
        QString key;
        QLabel* label;
        QWidget* control;
    };

    void listLookRows();
    QJsonValue ifTold(const QString& key, const QVariant& value) const;
    EffectProperty choiceOf(const QString& key, QComboBox* box);
    void listProperties();
    void connectForm();
    void connectLookRows();
    void explainRows();
    void showFrameInterval(int ms);
    void nameFrameRates();
    void followWipeDarkSide();
    void showCaptures(const QJsonValue& list);
    void showSource(const QString& id);
    void followAdvancedMode();
    void updateRows();

    std::unique_ptr<Ui::ScreenSyncSOptWidget> m_ui;
    QList<QString> m_captures; ///< identifiers, in the order of the combo box
    bool m_enbWipeDarkSide = false;
    bool m_showSources = false;
    bool m_enbAdjust = false;
    QList<LookRow> m_lookRows;
    QSet<QString> m_told; ///< which of their values the worker has told
    QString m_chosenId;   ///< here, since the worker last said what is current
};
