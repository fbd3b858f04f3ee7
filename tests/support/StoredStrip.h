#pragma once

#include <QJsonObject>

/// What the program keeps of a strip that was lit and had this effect last.
inline QJsonObject storedStrip(const QString& effect, int nbLeds, double brightness = 1.0)
{
    return {{"brightness", brightness},
            {"enable", true},
            {"nbLeds", nbLeds},
            {"workMode", effect.section('.', 0, -2)},
            {"subMode", effect}};
}
