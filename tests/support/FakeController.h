#pragma once

#include "controllers/AbsRGBController.h"

#include <QUuid>

/// A device without a line: remembers what it was asked to show. By default its id is new each time, so that
/// no stored value of an earlier run matters.
class FakeController : public AbsRGBController
{
public:
    explicit FakeController(const QString& id = "LVTEST:" + QUuid::createUuid().toString(QUuid::Id128),
                            uint32_t nbLeds = 3, const QString& name = {})
    {
        m_options.id = id;
        m_options.model = id.section(u':', 0, 0);
        m_options.serial = id.section(u':', 1);
        m_options.kindName = name;
        m_options.nbLeds = nbLeds;
        m_options.brightness = 1.0F;
    }

    QString id() const { return m_options.id; }
    void update(QVector<LV_RGB> colors) override
    {
        pictures += colors;
        AbsRGBController::update(colors);
    }
    void writeColors(const QVector<LV_RGB>& colors) override { shown = colors; }
    void rebuildHeader() override { counts += m_options.nbLeds; }

    QVector<QVector<LV_RGB>> pictures; ///< as the effects gave them
    QVector<LV_RGB> shown;             ///< after the colour pipeline
    QVector<uint32_t> counts;          ///< every LED count the transport was built for
};
