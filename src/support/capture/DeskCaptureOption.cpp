#include "support/capture/DeskCaptureOption.h"

#include <QCoreApplication>
#include <QDebug>
#include <QVariant>

namespace {
qulonglong addressOf(const DeskCaptureOption* option)
{
    return reinterpret_cast<quintptr>(option);
}
} // namespace

DeskCaptureOption* DeskCaptureOption::current()
{
    if (!qApp)
        return nullptr;
    return reinterpret_cast<DeskCaptureOption*>(
        static_cast<quintptr>(qApp->property(kProperty).toULongLong()));
}

DeskCaptureOption::DeskCaptureOption(int totalOfMode, QObject* parent)
    : QObject(parent)
    , m_totalOfMode(totalOfMode)
{
    if (qApp)
        qApp->setProperty(kProperty, addressOf(this));
}

DeskCaptureOption::~DeskCaptureOption()
{
    if (current() == this)
        qApp->setProperty(kProperty, QVariant());
}

void DeskCaptureOption::setCurMode(int mode)
{
    if (mode < 0 || mode >= totalOfMode()) {
        qWarning() << "[DeskCaptureOption]: There is no capture mode" << mode;
        return;
    }
    if (mode == m_curMode)
        return;
    m_curMode = mode;
    emit curModeChanged(mode);
}
