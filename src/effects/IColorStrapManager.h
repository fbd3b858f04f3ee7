#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QVector>

struct KeyColor
{
    double key = 0.5; ///< position, 0.0 to 1.0
    QColor color;
};

/// A named gradient.
struct ColorStrap
{
    QString name;
    QVector<KeyColor> keyColors;
    QColor endsColor; ///< colour of the positions 0 and 1
};

/// The list of gradients shared by all controllers and effects.
class IColorStrapManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual ColorStrap strap(int i) = 0;
    virtual int strapCount() = 0;
    virtual bool isValidStrapIndex(int i) = 0;
    virtual void removeStrap(int i) = 0;
    /// Returns the new index.
    virtual int addStrap(const ColorStrap& s) = 0;
    virtual int addDefaultStrap() = 0;
    virtual void setStrap(int i, const ColorStrap& s) = 0;

signals:
    void strapRemoved(int i);
    void strapAdded(int i);
    void strapChanged(int i);
};
Q_DECLARE_METATYPE(IColorStrapManager*)
