#pragma once

#include "ui/BaseDialog.h"
#include "viewModels/HotkeyCombine.h"

#include <QTimer>
#include <memory>

class QAction;
class QKeyEvent;

namespace Ui {
class HotKeyEditDialog;
}

/// Edits one key combination: the modifiers are check boxes, the key is the one pressed in the field. Whether
/// the combination can be taken is for the receiver of combineChanged() to say. Main thread.
class HotKeyEditDialog : public BaseDialog
{
    Q_OBJECT

public:
    /// `description` is the source text of the action's name.
    HotKeyEditDialog(QString description, HotkeyCombine combine, QWidget* parent = nullptr);
    ~HotKeyEditDialog() override;

    HotkeyCombine combine() const { return m_combine; }
    /// Tells the user for three seconds; only a valid combination can be confirmed.
    void setBindingStatus(bool valid);

signals:
    void combineChanged(HotkeyCombine combine);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showDescription();
    void explainMark();
    void takeKey(const QKeyEvent& event);
    void readControls();

    std::unique_ptr<Ui::HotKeyEditDialog> ui;
    QString m_description;
    HotkeyCombine m_combine;
    QAction* m_invalidMark = nullptr;
    QTimer m_statusTimer;
};
