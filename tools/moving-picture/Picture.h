#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QVector>

#include <memory>

class QPainter;

/// What a window shows at a time. Painting depends on the arguments alone.
class Picture
{
public:
    virtual ~Picture() = default;
    virtual void paint(QPainter& painter, const QRect& area, double seconds) = 0;
    /// Whether there is something new to paint as time goes on.
    virtual bool moves() const { return false; }
};

/// Wide fields of colour that drift over a night sky and run into each other. Painted small and scaled up,
/// so that a large screen costs little more than a small one.
class DriftingLights : public Picture
{
public:
    void paint(QPainter& painter, const QRect& area, double seconds) override;
    bool moves() const override { return true; }

private:
    QImage m_small;
};

/// The four quarters in the order top left, top right, bottom left, bottom right; one colour fills all.
class SolidFields : public Picture
{
public:
    explicit SolidFields(const QVector<QColor>& colors)
        : m_colors(colors)
    {
    }
    void setColor(const QColor& color) { m_colors = {color}; }
    void paint(QPainter& painter, const QRect& area, double seconds) override;

private:
    QVector<QColor> m_colors;
};
