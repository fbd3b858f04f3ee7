#pragma once

#include <QImage>
#include <QString>
#include <utility>

/// A picture of the catalogue. One that stands in a file is decoded each time it is asked for: what no page
/// shows takes no memory, and no time at the start.
class EffectPicture
{
public:
    EffectPicture() = default;
    EffectPicture(QImage image)
        : m_image(std::move(image))
    {
    }
    static EffectPicture fromFile(const QString& path)
    {
        EffectPicture picture;
        picture.m_path = path;
        return picture;
    }

    bool isNull() const { return m_path.isEmpty() && m_image.isNull(); }
    /// Null where the file has no picture.
    operator QImage() const { return m_path.isEmpty() ? m_image : QImage(m_path); }

private:
    QImage m_image;
    QString m_path;
};
