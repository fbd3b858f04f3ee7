#pragma once

#include "viewModels/HotkeyModel.h"

#include <QMap>
#include <QModelIndex>
#include <QVector>
#include <QWidget>
#include <functional>
#include <memory>

namespace Ui {
class HotKeyEditWidget;
}

/// The table of hotkey actions. A row opens the editor of its combination; one that does not work at present
/// is marked and says why. What may be taken, and the taking, is left to two callbacks. Main thread.
class HotKeyEditWidget : public QWidget
{
    Q_OBJECT

public:
    using Decision = std::function<bool(const QString& id, const HotkeyCombine& combine)>;

    explicit HotKeyEditWidget(QWidget* parent = nullptr);
    ~HotKeyEditWidget() override;

    /// Rows in this order.
    void setHotkeys(const QVector<HotkeyModel>& hotkeys);
    /// Source texts of the actions' names by id, of the translation context "HotkeyDescription".
    void setDescriptions(const QMap<QString, QString>& descriptions);
    /// May this combination be taken?
    void setCheckHotkey(Decision checkHotkey) { m_checkHotkey = std::move(checkHotkey); }
    /// Takes it; false: it is as it was.
    void setApplyHotkey(Decision applyHotkey) { m_applyHotkey = std::move(applyHotkey); }
    /// A combination became free, or was lost.
    void setTrouble(const QString& id, HotkeyTrouble trouble);
    /// The desktop has given it other keys, in its words; empty: those of the combination.
    void setDesktopKeys(const QString& id, const QString& keys);

signals:
    /// The user looks at the table: time to try again what could not be taken.
    void shown();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private slots:
    void onTableItemClicked(QModelIndex index);

private:
    void applyCombine(const QString& id, const HotkeyCombine& combine);
    static QString reason(HotkeyTrouble trouble);
    HotkeyModel* find(const QString& id);
    void showRow(int row);
    void showAll();

    std::unique_ptr<Ui::HotKeyEditWidget> ui;
    QVector<HotkeyModel> m_hotkeys; ///< one a row
    QMap<QString, QString> m_descriptions;
    Decision m_checkHotkey;
    Decision m_applyHotkey;
};
