#pragma once

#include <QString>
#include <QtGlobal>

// A colour as the models keep it: four 8-bit channels, or no colour at all.
// It needs nothing from QtGui, so the models, the report store and the
// command line carry colours without loading the GUI libraries; the drawing
// layer turns it into a QColor.
class Rgba {
public:
    // No colour.
    constexpr Rgba() = default;
    constexpr Rgba(int red, int green, int blue, int alpha = 255)
        : m_red(quint8(red)), m_green(quint8(green)), m_blue(quint8(blue)), m_alpha(quint8(alpha)),
          m_valid(true)
    {}

    constexpr bool isValid() const { return m_valid; }
    constexpr int red() const { return m_red; }
    constexpr int green() const { return m_green; }
    constexpr int blue() const { return m_blue; }
    constexpr int alpha() const { return m_alpha; }
    // 0xAARRGGBB with the alpha forced to 0xFF, and with the real alpha.
    constexpr uint rgb() const { return 0xff000000u | (rgba() & 0x00ffffffu); }
    constexpr uint rgba() const
    {
        return (uint(m_alpha) << 24) | (uint(m_red) << 16) | (uint(m_green) << 8) | uint(m_blue);
    }

    // "#RRGGBB" in capitals; empty for no colour.
    QString name() const
    {
        if (!m_valid)
            return QString();
        return QStringLiteral("#%1").arg(rgb() & 0x00ffffffu, 6, 16, QLatin1Char('0')).toUpper();
    }

    friend constexpr bool operator==(const Rgba&, const Rgba&) = default;

private:
    quint8 m_red = 0;
    quint8 m_green = 0;
    quint8 m_blue = 0;
    quint8 m_alpha = 0;
    bool m_valid = false;
};
