#include "effects/screenSync/LedMap.h"

#include "effects/screenSync/FrameFilters.h"

#include <algorithm>
#include <opencv2/core.hpp>

namespace {

constexpr QSize kGridSize{120, 67};

QJsonValue eitherOf(const QJsonObject& object, const char* key, const char* alternative)
{
    const QString preferred = QLatin1String(key);
    return object.value(object.contains(preferred) ? preferred : QLatin1String(alternative));
}

QJsonArray toArray(const QVector<QPoint>& points, int firstId)
{
    QJsonArray array;
    int id = firstId;
    for (const QPoint& point : points)
        array.append(QJsonObject{{"id", id++}, {"x", point.x()}, {"y", point.y()}});
    return array;
}

} // namespace

LedMap LedMap::defaultGrid(int nbLeds)
{
    LedMap map{kGridSize, QVector<QPoint>(nbLeds)};
    for (int i = 0; i < nbLeds; ++i)
        map.points[i] = QPoint(i % kGridSize.width(), i / kGridSize.width());
    return map;
}

void LedMap::apply(const QJsonObject& config)
{
    screenSize.setWidth(eitherOf(config, "screenWidth", "key_len").toInt(screenSize.width()));
    screenSize.setHeight(eitherOf(config, "screenHeight", "key_wid").toInt(screenSize.height()));
    const QJsonArray leds = eitherOf(config, "ledMap", "key_array").toArray();
    for (const QJsonValue& led : leds) {
        const int id = led["id"].toInt(-1);
        if (id < 1 || id > points.size())
            continue;
        QPoint& point = points[id - 1];
        const int x = led["x"].toInt(point.x());
        const int y = led["y"].toInt(point.y());
        if (x >= 0 && x < screenSize.width())
            point.setX(x);
        if (y >= 0 && y < screenSize.height())
            point.setY(y);
    }
}

QJsonObject LedMap::toConfig() const
{
    return {{"screenWidth", screenSize.width()},
            {"screenHeight", screenSize.height()},
            {"ledMap", toArray(points, 1)}};
}

QJsonArray LedMap::toProperty() const
{
    return toArray(points, 0);
}

void LedMap::resize(const QSize& size)
{
    screenSize = size;
    for (QPoint& point : points) {
        point.setX(std::min(std::max(point.x(), 0), size.width() - 1));
        point.setY(std::min(std::max(point.y(), 0), size.height() - 1));
    }
}

std::vector<cv::Rect> placesOf(const QVector<QPoint>& points, const QSize& canvas, const cv::Size& frame)
{
    std::vector<cv::Rect> places;
    const cv::Size scaled(canvas.width(), canvas.height());
    for (const QPoint& point : points) {
        const int x = std::max(0, std::min(point.x(), canvas.width() - 1));
        const int y = std::max(0, std::min(point.y(), canvas.height() - 1));
        places.push_back(FrameFilters::readBy({x, y, 1, 1}, scaled, {cv::Point(), frame}));
    }
    return places;
}

void readColors(const cv::Mat& frame, const QVector<QPoint>& points, QVector<LV_RGB>& colors)
{
    CV_Assert(frame.type() == CV_8UC4 && !frame.empty());
    const int count = std::min(points.size(), colors.size());
    for (int i = 0; i < count; ++i) {
        const int x = std::clamp(points[i].x(), 0, frame.cols - 1);
        const int y = std::clamp(points[i].y(), 0, frame.rows - 1);
        const auto& pixel = frame.at<cv::Vec4b>(y, x);
        colors[i] = {pixel[0], pixel[1], pixel[2]};
    }
}
