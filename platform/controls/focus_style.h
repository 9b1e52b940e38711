#pragma once

#include <QProxyStyle>

namespace platform {

// The desktop's style, but for the focus: whatever has it shows it, however it came there. A box of text or
// rows has a ring in the colour of selections, read-only ones too; and a list without the focus shows its
// selection in grey, so that of several lists it is plain which one a key will act on.
class FocusStyle : public QProxyStyle {
    Q_OBJECT
 public:
    using QProxyStyle::QProxyStyle;

    // Some dark desktops leave the hints in empty fields as dark as on a light one.
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    // Where the desktop draws everything larger by a fraction, a frame of one pixel lies between two of the
    // screen's, and what is inside paints over half of the ring: there it is one wider.
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
};

}  // namespace platform
