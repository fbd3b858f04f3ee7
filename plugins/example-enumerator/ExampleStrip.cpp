#include "ExampleStrip.h"

#include <QDebug>

namespace {

constexpr quint64 kPicturesPerLine = 100;
constexpr uint32_t kNbLeds = 30;

} // namespace

ExampleStrip::ExampleStrip(QObject* parent)
    : AbsRGBController(parent)
{
    m_options.model = QStringLiteral("LVXMPL");
    m_options.serial = QStringLiteral("00");
    m_options.id = m_options.storeKey();
    m_options.kindName = m_options.model;
    m_options.nbLeds = kNbLeds;
    // What the user changed in an earlier run.
    if (loadConfig() && m_options.nbLeds == 0)
        m_options.nbLeds = kNbLeds;
    rebuildHeader();
}

void ExampleStrip::writeColors(const QVector<LV_RGB>& colors)
{
    if (m_pictures++ % kPicturesPerLine != 0 || colors.isEmpty())
        return;
    const LV_RGB& first = colors.first();
    qDebug("[[loop]][ExampleStrip]: picture %llu, %d LEDs, the first is %d %d %d",
           static_cast<unsigned long long>(m_pictures), colors.size(), first.red, first.green, first.blue);
}

void ExampleStrip::rebuildHeader()
{
    qDebug() << "[ExampleStrip]: The strip has now" << m_options.nbLeds << "LEDs";
}
