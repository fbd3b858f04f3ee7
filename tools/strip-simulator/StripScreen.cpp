#include "StripScreen.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr LV_RGB kLabelInk{225, 228, 235};
constexpr LV_RGB kFactInk{140, 146, 158};
constexpr LV_RGB kKeysInk{95, 100, 112};
constexpr LV_RGB kWall{9, 10, 13};
constexpr LV_RGB kBezel{34, 36, 42};
constexpr LV_RGB kScreenGround{13, 14, 18};
constexpr int kMostHaloPx = 13; // light that shows beyond the screen's edge
constexpr int kWidestPx = 120;  // a larger picture is only slower
constexpr int kTallStrips = 4;  // more strips than these get one line each

/// A colour that fades into the wall.
LV_RGB faded(LV_RGB color, double share)
{
    const auto mix = [share](int light, int wall) {
        return static_cast<std::uint8_t>(wall + share * std::max(light - wall, 0));
    };
    return {mix(color.red, kWall.red), mix(color.green, kWall.green), mix(color.blue, kWall.blue)};
}

} // namespace

StripScreen::StripScreen(const LedMap& map)
    : m_map(map)
{
}

void StripScreen::draw(const QVector<View>& strips, const Surroundings& around)
{
    fitTerminal();
    m_canvas.fill(kWall);
    if (m_glow && strips.size() == 1)
        drawAroundScreen(strips.first(), around);
    else
        drawBars(strips);
    if (!m_glow || strips.size() != 1)
        m_canvas.text(1, m_canvas.rows() - 4, around.facts.join(QStringLiteral("    ")), kLabelInk);
    drawKeys(around.keys);
    Terminal::write(m_canvas.render(m_shown));
}

void StripScreen::fitTerminal()
{
    const QSize cells = Terminal::size();
    if (cells == QSize(m_canvas.columns(), m_canvas.rows()))
        return;
    m_canvas = TerminalCanvas(cells.width(), cells.height());
    m_shown.clear();
    Terminal::write("\x1b[0m\x1b[2J");
    m_glow.reset();
    if (m_map.isValid())
        layOutFrame();
}

void StripScreen::layOutFrame()
{
    const int halo = std::clamp(m_canvas.height() / 7, 4, kMostHaloPx) / 2 * 2;
    const double room = std::min(m_canvas.width(), kWidestPx) - 2 * halo;
    const double scale = std::min(room / m_map.canvas.width(),
                                  double(m_canvas.height() - 2 * halo - 2) / m_map.canvas.height());
    if (scale * m_map.canvas.width() < 20 || scale * m_map.canvas.height() < 8)
        return; // too small a terminal
    const QSize size(static_cast<int>(m_map.canvas.width() * scale),
                     static_cast<int>(m_map.canvas.height() * scale) / 2 * 2);
    m_screen = QRect(QPoint((m_canvas.width() - size.width()) / 2, halo), size);

    QVector<QPointF> leds;
    for (const QPoint& led : m_map.leds) {
        leds.append({m_screen.x() + (led.x() + 0.5) * size.width() / m_map.canvas.width(),
                     m_screen.y() + (led.y() + 0.5) * size.height() / m_map.canvas.height()});
    }
    const bool behind = m_map.isFrame();
    const double spacing = behind ? 2.0 * (size.width() + size.height()) / leds.size()
                                  : std::sqrt(double(size.width()) * size.height() / leds.size());
    const double reach = behind ? std::max(halo * 0.3, 0.8 * spacing) : 0.4 * spacing;
    if (!behind)
        m_screen = QRect();
    m_glow = std::make_unique<GlowPicture>(m_canvas.width(), m_canvas.height(), leds, reach, m_screen);
}

void StripScreen::drawAroundScreen(const View& strip, const Surroundings& around)
{
    m_glow->paint(strip.colors, kWall, m_canvas);
    drawScreen(around.picture);
    drawTexts(QStringList{strip.label} + strip.facts + around.facts, !around.picture.isNull());
}

void StripScreen::drawScreen(const QImage& picture)
{
    const QRect inside = m_screen.adjusted(1, 1, -1, -1);
    const QImage shown = picture.isNull() || inside.isEmpty()
                             ? QImage()
                             : picture.scaled(inside.size()).convertToFormat(QImage::Format_RGB32);
    for (int y = m_screen.top(); y <= m_screen.bottom(); ++y) {
        for (int x = m_screen.left(); x <= m_screen.right(); ++x) {
            if (!inside.contains(x, y)) {
                m_canvas.setPixel(x, y, kBezel);
            } else if (shown.isNull()) {
                m_canvas.setPixel(x, y, kScreenGround);
            } else {
                const QRgb color = shown.pixel(QPoint(x, y) - inside.topLeft());
                m_canvas.setPixel(
                    x, y,
                    {std::uint8_t(qRed(color)), std::uint8_t(qGreen(color)), std::uint8_t(qBlue(color))});
            }
        }
    }
}

/// The first one is the label. On a picture they need a ground of their own.
void StripScreen::drawTexts(const QStringList& texts, bool onPanel)
{
    // A strip with LEDs all over leaves the last lines for the texts.
    const QPoint top =
        m_screen.isNull() ? QPoint(m_canvas.columns() / 2, m_canvas.rows() - 2 - texts.size())
                          : QPoint(m_screen.center().x() + 1, (m_screen.center().y() + 1 - texts.size()) / 2);
    int widest = 0;
    for (const QString& text : texts)
        widest = std::max(widest, text.size());
    const QRect panel(top.x() - widest / 2 - 2, 2 * top.y() - 1, widest + 4, 2 * texts.size() + 2);
    for (int y = panel.top(); onPanel && y <= panel.bottom(); ++y) {
        for (int x = panel.left(); x <= panel.right(); ++x)
            m_canvas.setPixel(x, y, kScreenGround);
    }
    for (int i = 0; i < texts.size(); ++i)
        m_canvas.text(top.x() - texts[i].size() / 2, top.y() + i, texts[i], i == 0 ? kLabelInk : kFactInk);
}

void StripScreen::drawBars(const QVector<View>& strips)
{
    const bool tall = strips.size() <= kTallStrips;
    int row = 1;
    for (const View& strip : strips)
        row = drawBar(row, strip, tall) + 1;
}

/// Returns the row behind the bar.
int StripScreen::drawBar(int row, const View& strip, bool tall)
{
    const QString facts = strip.facts.join(QStringLiteral("  "));
    m_canvas.text(1, row, strip.label, kLabelInk);
    m_canvas.text(strip.label.size() + 3, row, facts, kFactInk);
    ++row;
    static const QVector<double> kTallProfile{0.12, 0.4, 1, 1, 0.4, 0.12};
    static const QVector<double> kFlatProfile{1, 1};
    const QVector<double>& profile = tall ? kTallProfile : kFlatProfile;
    const int width = std::max(m_canvas.width() - 2, 1);
    const int perLed = std::max(width / std::max(strip.colors.size(), 1), 1);
    const int perLine = width / perLed;
    for (int first = 0; first < strip.colors.size(); first += perLine) {
        const int count = std::min(perLine, strip.colors.size() - first);
        for (int x = 0; x < count * perLed; ++x) {
            for (int y = 0; y < profile.size(); ++y)
                m_canvas.setPixel(1 + x, 2 * row + y, faded(strip.colors[first + x / perLed], profile[y]));
        }
        row += profile.size() / 2;
    }
    return row;
}

void StripScreen::drawKeys(const QString& more)
{
    int row = m_canvas.rows() - 1;
    for (const QString& keys :
         {QStringLiteral("b button    u unplug / plug in    r restart    q quit"), more})
        m_canvas.text((m_canvas.columns() - keys.size()) / 2, row--, keys, kKeysInk);
}
