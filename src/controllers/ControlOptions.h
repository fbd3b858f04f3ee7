#pragma once

#include <QImage>
#include <QJsonArray>
#include <QString>
#include <cstdint>

/// Describes one device, for its controller and for the effects that run on it.
struct ControlOptions
{
    QString kindName; ///< the user's name for the device
    QString portName;
    QString model;  ///< six characters, upper case, such as LV0N03
    QString serial; ///< upper-case hexadecimal text
    QString id;     ///< model ":" serial, the key of every per-device store; empty: invalid record
    QImage icon;
    QImage image;
    std::uint32_t nbLeds = 0;
    float brightness = 0.5F; ///< 0.0 to 1.0
    float gama = 1.0F;
    bool enable = true;
    std::uint32_t status = 0;           ///< 0 working, 2 link failure during use, 3 cannot work
    std::uint32_t installDirection = 0; ///< 1: the strip runs mirrored
    QString workMode;                   ///< group id of the bound effect
    QString subMode;                    ///< id of the bound effect
    int ledPerUnit = 0;                 ///< LEDs that the hardware drives as one
    bool adjustableLength = false;
    QJsonArray unavailable_modes;
    int frameSlotUs = 0; ///< how long the device's line is busy with one frame; 0: it has no pace of its own

    bool isValid() const { return !id.isEmpty(); }
    /// The key under which the controller saves itself; differs from id for a device without serial.
    QString storeKey() const { return model + QLatin1Char(':') + serial; }
};
