#include "pdf/stamping/widgetFrame.h"

#include "pdf/stamping/contentText.h"

#include <QRectF>

#include <algorithm>
#include <array>

namespace folvane::pdf {

namespace {

using ColourOperators = std::array<const char*, 3>; // for one component, three and four
constexpr ColourOperators toFill{"g", "rg", "k"};
constexpr ColourOperators toStroke{"G", "RG", "K"};

struct Border {
    double width = 1; ///< points
    std::string style = "/S";
    QPDFObjectHandle dashes = QPDFObjectHandle::newNull();
};

double numberOr(QPDFObjectHandle object, double otherwise)
{
    return object.isNumber() ? object.getNumericValue() : otherwise;
}

Border borderOf(QPDFObjectHandle widget)
{
    Border border;
    QPDFObjectHandle style = widget.getKey("/BS"), old = widget.getKey("/Border");
    if (style.isDictionary()) {
        border.width = numberOr(style.getKey("/W"), 1);
        border.style = style.getKey("/S").isName() ? style.getKey("/S").getName() : border.style;
        border.dashes = style.getKey("/D");
    } else if (old.isArray() && old.getArrayNItems() >= 3) {
        border.width = numberOr(old.getArrayItem(2), 1);
        border.dashes = old.getArrayNItems() > 3 ? old.getArrayItem(3) : border.dashes;
        border.style = border.dashes.isArray() ? "/D" : border.style;
    }
    return border;
}

/// "1 0 0 rg"; empty for none.
std::string colour(QPDFObjectHandle components, const ColourOperators& operators)
{
    const int count = components.isArray() ? components.getArrayNItems() : 0;
    if (count != 1 && count != 3 && count != 4)
        return {};
    std::string text;
    for (int i = 0; i < count; ++i)
        text += number(numberOr(components.getArrayItem(i), 0)) + ' ';
    return text + operators[size_t(count) / 2] + '\n';
}

std::string dashing(QPDFObjectHandle dashes)
{
    std::string lengths;
    for (int i = 0; dashes.isArray() && i < dashes.getArrayNItems(); ++i)
        lengths += number(std::max(numberOr(dashes.getArrayItem(i), 0), 0.0)) + ' ';
    const bool isDashed = lengths.find_first_of("123456789") != std::string::npos;
    return '[' + (isDashed ? lengths : "3") + "] 0 d\n";
}

std::string path(const QRectF& box, FrameShape shape)
{
    if (shape == FrameShape::Box)
        return numbers({box.x(), box.y(), box.width(), box.height()}) + " re\n";
    const double radius = std::min(box.width(), box.height()) / 2;
    const double pull = 0.552285 * radius; // of a quarter circle's control points
    const double x = box.center().x(), y = box.center().y();
    return numbers({x + radius, y}) + " m\n"
           + numbers({x + radius, y + pull, x + pull, y + radius, x, y + radius}) + " c\n"
           + numbers({x - pull, y + radius, x - radius, y + pull, x - radius, y}) + " c\n"
           + numbers({x - radius, y - pull, x - pull, y - radius, x, y - radius}) + " c\n"
           + numbers({x + pull, y - radius, x + radius, y - pull, x + radius, y}) + " c\nh\n";
}

/// Within the border, as wide as that: light falls on what is raised or sunk from the upper left.
std::string edges(QSizeF size, double width, const char* upperLeft, const char* lowerRight)
{
    const double left = width, right = size.width() - width, bottom = width, top = size.height() - width;
    const std::string inner = numbers({right - width, top - width}) + " l\n";
    const std::string rest = numbers({left + width, bottom + width}) + " l\nf\n";
    return upperLeft + numbers({left, bottom}) + " m\n" + numbers({left, top}) + " l\n"
           + numbers({right, top}) + " l\n" + inner + numbers({left + width, top - width}) + " l\n" + rest
           + lowerRight + numbers({left, bottom}) + " m\n" + numbers({right, bottom}) + " l\n"
           + numbers({right, top}) + " l\n" + inner + numbers({right - width, bottom + width}) + " l\n"
           + rest;
}

std::string lines(const Border& border, QSizeF size, FrameShape shape)
{
    const double half = border.width / 2;
    const std::string width = number(border.width) + " w\n";
    if (border.style == "/U")
        return width + numbers({0, half}) + " m\n" + numbers({size.width(), half}) + " l\nS\n";
    const QRectF middle = QRectF(QPointF(), size).adjusted(half, half, -half, -half);
    return width + (border.style == "/D" ? dashing(border.dashes) : "") + path(middle, shape) + "S\n";
}

bool hasEdges(const Border& border, FrameShape shape)
{
    return shape == FrameShape::Box && (border.style == "/B" || border.style == "/I");
}

} // namespace

WidgetFrame widgetFrame(QPDFObjectHandle widget, QSizeF size, FrameShape shape)
{
    QPDFObjectHandle looks = widget.getKey("/MK");
    if (!looks.isDictionary())
        return {};
    WidgetFrame frame;
    if (const std::string ground = colour(looks.getKey("/BG"), toFill); !ground.empty())
        frame.content = ground + path(QRectF(QPointF(), size), shape) + "f\n";
    Border border = borderOf(widget);
    border.width = std::min(border.width, std::min(size.width(), size.height()) / 4);
    const std::string ink = colour(looks.getKey("/BC"), toStroke);
    if (ink.empty() || border.width <= 0)
        return frame;
    frame.borderWidth = border.width;
    if (hasEdges(border, shape)) {
        const bool isRaised = border.style == "/B";
        frame.borderWidth = 2 * border.width;
        frame.content += isRaised ? edges(size, border.width, "1 g\n", "0.5 g\n")
                                  : edges(size, border.width, "0.5 g\n", "0.75 g\n");
    }
    frame.content += ink + lines(border, size, shape);
    return frame;
}

} // namespace folvane::pdf
