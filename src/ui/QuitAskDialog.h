#pragma once

#include "ui/BaseDialog.h"

#include <memory>

namespace Ui {
class QuitAskDialog;
}

/// Asks what the close button of the main window should do. Rejected by other means than its two buttons:
/// nothing at all. Main thread.
class QuitAskDialog : public BaseDialog
{
    Q_OBJECT

public:
    explicit QuitAskDialog(QWidget* parent = nullptr);
    ~QuitAskDialog() override;

    /// For a desktop without a tray: the answer to minimise does not speak of one.
    void offerNoTray();
    /// The answer holds for the next times as well.
    bool remember() const { return m_remember; }
    /// Quit the program; else it goes on in the tray.
    bool quit() const { return m_quit; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void answer(bool quit);

    std::unique_ptr<Ui::QuitAskDialog> ui;
    bool m_remember = false;
    bool m_quit = false;
    bool m_hasTray = true;
};
