#pragma once

#include <QByteArray>
#include <QImage>
#include <QVector>

/// The bytes of an .ico file with the square pictures, 256 pixels wide at most.
QByteArray windowsIcon(const QVector<QImage>& pictures);
