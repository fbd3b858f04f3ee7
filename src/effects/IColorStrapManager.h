#pragma once

#include "support/SharedLibrary.h"

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

/// The list of gradients shared by all controllers and effects; never empty. An index is a position: removing
/// a strap moves the later ones down by one, and who keeps an index corrects it on strapRemoved. Operations
/// on an index outside the list log it and change nothing. Any thread; changes are stored by themselves.
class LUMIVAR_EFFECTS_EXPORT IColorStrapManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// An empty record, with an invalid endsColor, for an index outside the list.
    virtual ColorStrap strap(int i) = 0;
    virtual int strapCount() = 0;
    virtual bool isValidStrapIndex(int i) = 0;
    /// The last one stays.
    virtual void removeStrap(int i) = 0;
    /// Returns the new index.
    virtual int addStrap(const ColorStrap& s) = 0;
    virtual int addDefaultStrap() = 0;
    /// Taken as it is: a strap that draws nothing is the caller's business, until the next start drops it.
    virtual void setStrap(int i, const ColorStrap& s) = 0;

    // After the change, with the list free to be read and written again.
signals:
    void strapRemoved(int i);
    void strapAdded(int i);
    void strapChanged(int i);
};
Q_DECLARE_METATYPE(IColorStrapManager*)
