#pragma once

#include "controllers/AbsRGBController.h"

/// A strip without hardware: it counts the pictures and tells of some of them in the log.
class ExampleStrip : public AbsRGBController
{
    Q_OBJECT

public:
    explicit ExampleStrip(QObject* parent);

    void writeColors(const QVector<LV_RGB>& colors) override;
    void rebuildHeader() override;

private:
    quint64 m_pictures = 0;
};
