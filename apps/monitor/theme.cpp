#include "theme.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QToolTip>

static const char* const names[] = {"system", "light", "dark"};

namespace
{

// Combo boxes open a list that scrolls, and no menu of hundreds. A style sheet could tell them so too, but then they
// keep the colours from before a change of palette.
class ScrollingListStyle : public QProxyStyle
{
public:
    explicit ScrollingListStyle(const QString& name)
        : QProxyStyle(QStyleFactory::create(name))
    {
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
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
    QApplication::setStyle(new ScrollingListStyle(systemStyleName()));
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
        QApplication::setStyle(new ScrollingListStyle(systemStyle));
        QApplication::setPalette(systemPalette);
        QToolTip::setPalette(systemPalette);
        return;
    }
    // Not every style takes the colours that it is told; this one does.
    QApplication::setStyle(new ScrollingListStyle(QLatin1String("Fusion")));
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
