#pragma once

#include <QToolButton>

/// The button of one device: its picture above a strip with its name. The name is the user's own text: shown
/// as it is, on one line, cut to the strip, while text() stays the real name. Main thread.
class DeviceButton : public QToolButton
{
    Q_OBJECT

public:
    explicit DeviceButton(QWidget* parent = nullptr);

    void setName(const QString& name);
    /// The strip at the bottom that shows the name; a click there renames.
    QRect nameStrip() const;

signals:
    /// The user asked by the keyboard for another name.
    void renameOrdered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void cutName();

    QString m_shownName; ///< null until it is needed
};
