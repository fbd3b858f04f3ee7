#pragma once

#include "effects/IColorStrapManager.h"

/// A list of straps in memory that refuses nothing.
class FakeStrapList : public IColorStrapManager
{
public:
    explicit FakeStrapList(const QVector<ColorStrap>& list)
        : IColorStrapManager(nullptr)
        , straps(list)
    {
    }

    ColorStrap strap(int i) override { return straps.value(i); }
    int strapCount() override { return straps.size(); }
    bool isValidStrapIndex(int i) override { return i >= 0 && i < straps.size(); }
    void removeStrap(int i) override
    {
        straps.remove(i);
        emit strapRemoved(i);
    }
    int addStrap(const ColorStrap& s) override
    {
        straps.append(s);
        emit strapAdded(straps.size() - 1);
        return straps.size() - 1;
    }
    int addDefaultStrap() override { return addStrap({"new", {{0.5, Qt::red}}, Qt::green}); }
    void setStrap(int i, const ColorStrap& s) override
    {
        straps[i] = s;
        emit strapChanged(i);
    }

    QVector<ColorStrap> straps;
};
