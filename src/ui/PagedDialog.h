#pragma once

#include "ui/BaseDialog.h"

class QStackedWidget;
class SliderBar;

/// A dialog of pages below a bar of their names. It is large enough for the largest of them in the language
/// of the moment, as far as the screen allows. Main thread.
class PagedDialog : public BaseDialog
{
    Q_OBJECT

protected:
    explicit PagedDialog(QWidget* parent);

    /// To be called once the form stands; `usualSize` is what it is not to be smaller than.
    void initPages(SliderBar& bar, QStackedWidget& pages, QSize usualSize);
    /// Separated by ";"; there may be fewer than pages.
    void setPageNames(const QString& names);
    void showPage(int index, const QString& name);
    /// Scrolling a page past these must not change them.
    void keepFromWheel(const QVector<QWidget*>& controls);

    virtual void retranslate() = 0;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// For every page as it is now, without a scroll bar.
    QSize neededSize() const;
    /// Takes that size where it is smaller, as far as the screen allows; the rest is scrolled.
    void growAround(QPoint centre);

    SliderBar* m_bar = nullptr;
    QStackedWidget* m_pages = nullptr;
    QSize m_usualSize;
};
