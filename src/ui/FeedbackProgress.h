#pragma once

#include "ui/BaseDialog.h"

#include <memory>

namespace Ui {
class FeedbackProgress;
}

/// Tells the user how far a report has got that takes its time. Application modal, without a loop of its own:
/// show() it, hide() or delete it when the report is done. Main thread.
class FeedbackProgress : public BaseDialog
{
    Q_OBJECT

public:
    enum class Step {
        Gathering, ///< the archive is written
        Sending
    };

    explicit FeedbackProgress(QWidget* parent = nullptr);
    ~FeedbackProgress() override;

    void setStep(Step step);
    /// -1: nobody knows how far it is.
    void setProgress(int percent);

signals:
    /// The user's wish, by the button or Escape; the box is hidden already. Delete it later only.
    void cancelled();

protected:
    void changeEvent(QEvent* event) override;

private:
    void showStep();

    std::unique_ptr<Ui::FeedbackProgress> ui;
    Step m_step = Step::Gathering;
};
