#pragma once

#include "ui/ImageWidget.h"

/// A picture over the full height, centred; a wide one runs past both sides. Main thread.
class AD2ImageWidget : public ImageWidget
{
    Q_OBJECT

public:
    explicit AD2ImageWidget(QWidget* parent = nullptr);

    /// A null picture is refused with a warning; the old one stays.
    void setImg(QImage img) override;
    /// As high as the picture needs for its whole width, but no higher than one and a half times that.
    int heightForWidth(int width) const override;

protected:
    QRect targetRect() const override;
};
