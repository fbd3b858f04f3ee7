#include "ExampleEnumerator.h"

#include "ExampleStrip.h"

#include <QTimer>

ExampleEnumerator::ExampleEnumerator(QObject* parent)
    : IDeviceEnumerator(parent)
{
    // Not from the constructor: nobody is connected yet.
    QTimer::singleShot(0, this, &ExampleEnumerator::offerStrip);
}

void ExampleEnumerator::offerStrip()
{
    emit deviceEnabled(AbsRGBControllerPtr(new ExampleStrip(nullptr), &QObject::deleteLater));
}
