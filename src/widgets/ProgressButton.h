#pragma once

#include <QAction>
#include <QPushButton>

/// A button that fills from its start while something is under way. What is still to come is drawn in the
/// style of a checked button.
class ProgressButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ProgressButton(QWidget* parent = nullptr);

    int percent() const { return m_percent; }
    /// Negative: a button like any other.
    void setPercent(int percent);
    /// Opens a menu below it with one entry, whose action it gives; the menu deletes itself.
    QAction* openMenu(const QString& entry);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_percent = -1;
};
