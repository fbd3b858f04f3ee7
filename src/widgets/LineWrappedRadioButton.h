#pragma once

#include <QRadioButton>

/// A radio button whose text is wrapped at its blanks to the width that the button gets. Where the style
/// draws no mark the text is centred, and the whole face reacts to the mouse. The longest word of the text
/// that it has when it is polished, or when the language changes, gives the minimum width.
class LineWrappedRadioButton : public QRadioButton
{
    Q_OBJECT

public:
    explicit LineWrappedRadioButton(QWidget* parent = nullptr);

    /// Narrow, so that a row may be smaller than its texts.
    QSize minimumSizeHint() const override;

    /// Lines of at most `limit` pixels. A word that is wider stays whole.
    static QString wrapped(const QString& text, const QFontMetrics& metrics, int limit);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& pos) const override;

private:
    int longestWordWidth() const;
    int chromeWidth() const;
    void wrapTo(int width);
};
