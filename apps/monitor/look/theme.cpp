#include "theme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

static const int TabSpace = 14; // left and right of the names of docks, which are many
static const char* const names[] = {"system", "light", "dark"};

namespace
{

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

// High contrast has buttons of the colour of the window, and on black the style's frames cannot be seen.
bool hasUnseenFrames(const QPalette& palette)
{
    return isDark(palette) && palette.color(QPalette::Button) == palette.color(QPalette::Window);
}

// Combo boxes open a list that scrolls, and no menu of hundreds. A style sheet could tell them so too, but then they
// keep the colours from before a change of palette. And what styles draw nearly black can be seen on dark grounds, too.
class AdaptedStyle : public QProxyStyle
{
public:
    explicit AdaptedStyle(const QString& name)
        : QProxyStyle(QStyleFactory::create(name))
    {
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        const int wanted = QProxyStyle::pixelMetric(metric, option, widget);
        const bool isOfDocks = widget && qobject_cast<const QMainWindow*>(widget->parentWidget());
        return metric == PM_TabBarTabHSpace && isOfDocks ? qMin(wanted, TabSpace) : wanted;
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isButton = element == PE_PanelButtonCommand && hasUnseenFrames(option->palette);
        const bool hasFrame = isButton || element == PE_IndicatorItemViewItemCheck || element == PE_IndicatorCheckBox ||
                              element == PE_IndicatorMenuCheckMark || element == PE_FrameLineEdit;
        if (!hasFrame || !isDark(option->palette) || option->state & State_HasFocus)
            return;
        drawFrame(painter, option, option->rect);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override
    {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (!hasUnseenFrames(option->palette))
            return;
        if (control == CC_ComboBox || control == CC_SpinBox)
            drawFrame(painter, option, option->rect);
        else if (control == CC_Slider)
            drawFrame(painter, option, subControlRect(control, option, SC_SliderHandle, widget));
        else if (control == CC_ScrollBar)
            drawFrame(painter, option, subControlRect(control, option, SC_ScrollBarSlider, widget));
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (element == CE_ShapedFrame && option->state & State_HasFocus &&
            qobject_cast<const QAbstractItemView*>(widget)) {
            // Of a list nothing else tells that it has the focus before there is a row.
            QProxyStyle::drawControl(element, option, painter, widget);
            painter->setPen(option->palette.color(QPalette::Highlight));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            return;
        }
        if (element == CE_TabBarTabShape && option->state & State_Selected && hasUnseenFrames(option->palette)) {
            QProxyStyle::drawControl(element, option, painter, widget);
            drawFrame(painter, option, option->rect);
            return;
        }
        const auto* const button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
        if (element != CE_ToolButtonLabel || !button || !widget ||
            widget->objectName() != QLatin1String("qt_toolbar_ext_button")) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QStyleOptionToolButton coloured = *button; // tool bars take the picture of this button only once
        coloured.icon = inColour(button->icon, option->palette.color(QPalette::ButtonText));
        QProxyStyle::drawControl(element, &coloured, painter, widget);
    }

    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override
    {
        const QIcon icon = QProxyStyle::standardIcon(kind, option, widget);
        const bool isBlack = kind == SP_MediaPlay || kind == SP_MediaPause || kind == SP_MediaStop ||
                             kind == SP_MediaSkipForward || kind == SP_MediaSkipBackward || kind == SP_BrowserReload;
        return isBlack ? inColour(icon, QApplication::palette().color(QPalette::ButtonText)) : icon;
    }

private:
    static void drawFrame(QPainter* painter, const QStyleOption* option, const QRect& place)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(option->palette.color(QPalette::Light));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter->restore();
    }

    static QIcon inColour(const QIcon& icon, const QColor& colour)
    {
        QPixmap pixmap = icon.pixmap(64);
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(QPoint(), pixmap.size()), colour);
        painter.end();
        return QIcon(pixmap);
    }
};

} // namespace

static QString systemStyleName()
{
    static const QString name = QApplication::style()->objectName(); // asked first before any style is set
    return name;
}

void Theme::initialize()
{
    QApplication::setStyle(new AdaptedStyle(systemStyleName()));
    QObject::connect(qApp, &QApplication::focusChanged, qApp, [](QWidget* before, QWidget* now) {
        for (QWidget* const widget : {before, now})
            if (qobject_cast<QAbstractItemView*>(widget))
                widget->update(); // its frame, which it leaves as it is
    });
}

static QPalette makePalette(bool dark)
{
    const QColor text(dark ? 0xe6e6e6 : 0x1a1a1a);
    const QColor grey(dark ? 0x939393 : 0x757575);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(dark ? 0x2b2d30 : 0xefefef));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, QColor(dark ? 0x1e1f22 : 0xffffff));
    palette.setColor(QPalette::AlternateBase, QColor(dark ? 0x25272b : 0xf6f6f6));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, grey);
    palette.setColor(QPalette::Button, QColor(dark ? 0x35383d : 0xefefef));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, QColor(dark ? 0xff6b68 : 0xc00000));
    palette.setColor(QPalette::ToolTipBase, QColor(dark ? 0x3a3d42 : 0xffffe8));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(dark ? 0x2f65ca : 0x308cc6));
    palette.setColor(QPalette::HighlightedText, QColor(0xffffff));
    palette.setColor(QPalette::Link, QColor(dark ? 0x6ea8fe : 0x0057ae));
    palette.setColor(QPalette::LinkVisited, QColor(dark ? 0xb79cff : 0x6b3fa0));
    palette.setColor(QPalette::Light, QColor(dark ? 0x4a4d52 : 0xffffff));
    palette.setColor(QPalette::Midlight, QColor(dark ? 0x3f4247 : 0xcacaca));
    palette.setColor(QPalette::Mid, QColor(dark ? 0x232528 : 0xb8b8b8));
    palette.setColor(QPalette::Dark, QColor(dark ? 0x17181a : 0x9f9f9f));
    palette.setColor(QPalette::Shadow, QColor(dark ? 0x0c0c0d : 0x767676));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, grey);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(dark ? 0x3f4247 : 0x919191));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, grey);
    return palette;
}

void Theme::apply(Kind kind)
{
    static const QPalette systemPalette = QApplication::palette();
    const QString systemStyle = systemStyleName();
    if (kind == System) {
        QApplication::setStyle(new AdaptedStyle(systemStyle));
        QApplication::setPalette(systemPalette);
        QToolTip::setPalette(systemPalette);
        return;
    }
    // Not every style takes the colours that it is told; this one does.
    QApplication::setStyle(new AdaptedStyle(QLatin1String("Fusion")));
    const QPalette palette = makePalette(kind == Dark);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

bool Theme::find(const QString& name, Kind* kind)
{
    for (int i = System; i <= Dark; ++i) {
        if (name != QLatin1String(names[i]))
            continue;
        *kind = static_cast<Kind>(i);
        return true;
    }
    return false;
}

QString Theme::nameOf(Kind kind)
{
    return QLatin1String(names[kind]);
}

QColor Theme::faintText(const QPalette& palette)
{
    // The colour of disabled text is too faint to read values in.
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    const auto mix = [](int front, int back) { return (front * 58 + back * 42) / 100; };
    return QColor(mix(text.red(), ground.red()), mix(text.green(), ground.green()), mix(text.blue(), ground.blue()));
}

QColor Theme::accent(const QPalette& palette, Accent accent)
{
    struct Pair
    {
        QRgb light;
        QRgb dark;
    };
    static const Pair colors[] = {{0, 0},
                                  {0x1b7f3b, 0x5fd38a},
                                  {0x1c6fb5, 0x6cb6ff},
                                  {0xa65b00, 0xffb632},
                                  {0xc62828, 0xff7b72},
                                  {0x7b3fb5, 0xc39bff}};
    const Pair& pair = colors[accent];
    if (accent == Plain)
        return palette.color(QPalette::ButtonText);
    return QColor(isDark(palette) ? pair.dark : pair.light);
}

QColor Theme::changeShade(const QPalette& palette, int percent)
{
    // On a dark ground a little of a dark blue cannot be seen.
    const bool dark = isDark(palette);
    QColor color = dark ? accent(palette, Waiting) : palette.color(QPalette::Highlight);
    color.setAlpha(255 * (dark ? percent + 6 : percent) / 100);
    return color;
}

void Theme::makeHint(QLabel* label)
{
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText); // fainter, but not as faint as what is disabled
}
