#pragma once

#include "ui/ImageWidget.h"

/// A picture over the full width from the top left; a tall one runs past the bottom. Main thread.
class AD1ImageWidget : public ImageWidget
{
    Q_OBJECT

public:
    explicit AD1ImageWidget(QWidget* parent = nullptr);

    /// A null picture is refused with a warning; the old one stays.
    void setImg(QImage img) override;
    /// As high as the picture needs, but no higher than wide.
    int heightForWidth(int width) const override;

protected:
    QRect targetRect() const override;
};
