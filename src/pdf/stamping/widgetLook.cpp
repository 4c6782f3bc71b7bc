#include "pdf/stamping/widgetLook.h"

#include "pdf/stamping/contentText.h"
#include "pdf/stamping/widgetFrame.h"

#include <QString>

#include <algorithm>

namespace folvane::pdf {

namespace {

using Field = QPDFFormFieldObjectHelper;

std::string caption(QPDFObjectHandle widget)
{
    QPDFObjectHandle text = widget.getKey("/MK").getKeyIfDict("/CA");
    return text.isString() ? text.getUTF8Value() : std::string();
}

/// The same field as one of text: the library draws no others.
QPDFObjectHandle saying(const std::string& text, QPDF& document, QPDFObjectHandle field)
{
    QPDFObjectHandle copy = field.shallowCopy();
    copy.replaceKey("/FT", QPDFObjectHandle::newName("/Tx"));
    copy.replaceKey("/V", QPDFObjectHandle::newUnicodeString(text));
    return document.makeIndirectObject(copy);
}

/// What is drawn in its place: passwords are not for everybody to read.
QPDFObjectHandle shownField(QPDF& document, QPDFObjectHandle widget)
{
    Field field(widget);
    if (field.isPushbutton())
        return saying(caption(widget), document, widget);
    if (field.isText() && (field.getFlags() & ff_tx_password) != 0)
        return saying(std::string(size_t(QString::fromStdString(field.getValueAsString()).size()), '*'),
                      document, widget);
    return widget;
}

bool hasText(QPDFObjectHandle field)
{
    return !Field(field).getValueAsString().empty() || Field(field).isChoice();
}

FrameShape shapeOf(QPDFObjectHandle widget)
{
    const std::string mark = caption(widget);
    return Field(widget).isRadioButton() && (mark.empty() || mark == "l") ? FrameShape::Circle
                                                                          : FrameShape::Box;
}

/// The mark of a box that is checked, in the middle.
std::string markOf(QPDFObjectHandle widget, QSizeF size)
{
    Field field(widget);
    const std::string state = QPDFAnnotationObjectHelper(widget).getAppearanceState();
    if (!(field.isCheckbox() || field.isRadioButton()) || state.empty() || state == "/Off")
        return {};
    const std::string own = caption(widget), mark = own.empty() ? field.isRadioButton() ? "l" : "4" : own;
    constexpr double width = 0.8, height = 0.7;   // of the letters, about
    const double share = mark == "l" ? 0.5 : 0.8; // of the box; that one is a full circle
    const double letter = share * std::min(size.width(), size.height());
    return "BT\n0 g\n/ZaDb " + number(letter) + " Tf\n"
           + numbers({(size.width() - width * letter) / 2, (size.height() - height * letter) / 2}) + " Td\n"
           + QPDFObjectHandle::newString(mark).unparse() + " Tj\nET\n";
}

/// How far the field's content is turned counterclockwise, in quarters.
int quarterTurns(QPDFObjectHandle widget)
{
    QPDFObjectHandle angle = widget.getKey("/MK").getKeyIfDict("/R");
    return angle.isInteger() ? int((angle.getIntValue() / 90 % 4 + 4) % 4) : 0;
}

QPDFObjectHandle newAppearance(QPDF& document, const std::string& content, bool isMarked)
{
    const char* const fonts = "/Font << /ZaDb << /Type /Font /Subtype /Type1 /BaseFont /ZapfDingbats >> >>";
    QPDFObjectHandle appearance = document.newStream(content);
    appearance.replaceDict(QPDFObjectHandle::parse("<< /Type /XObject /Subtype /Form /Resources << "
                                                   + std::string(isMarked ? fonts : "") + " >> >>"));
    return appearance;
}

void setBounds(QPDFObjectHandle appearance, double left, double right, double top)
{
    appearance.getDict().replaceKey("/BBox", QPDFObjectHandle::newFromRectangle({left, 0, right, top}));
}

} // namespace

void drawWidget(QPDF& document, QPDFObjectHandle widget)
{
    const QPDFObjectHandle::Rectangle rect = QPDFAnnotationObjectHelper(widget).getRect();
    const int turns = quarterTurns(widget);
    const QSizeF place(rect.urx - rect.llx, rect.ury - rect.lly);
    const QSizeF size = turns % 2 ? place.transposed() : place;
    const WidgetFrame frame = widgetFrame(widget, size, shapeOf(widget));
    const std::string mark = markOf(widget, size), drawing = frame.content + mark;
    if (size.isEmpty() || (drawing.empty() && !hasText(shownField(document, widget))))
        return;
    QPDFObjectHandle appearance =
        newAppearance(document, "q\n" + drawing + "Q\n/Tx BMC\nEMC\n", !mark.empty());
    const QTransform turn = QTransform().rotate(90 * turns);
    appearance.getDict().replaceKey("/Matrix", QPDFObjectHandle::newFromMatrix(QPDFMatrix(
                                                   turn.m11(), turn.m12(), turn.m21(), turn.m22(), 0, 0)));
    widget.replaceKey("/AP", QPDFObjectHandle::newDictionary({{"/N", appearance}}));
    widget.removeKey("/AS"); // which would name one of several
    setBounds(appearance, frame.borderWidth, size.width() - frame.borderWidth, size.height());
    drawValue(document, widget);
    setBounds(appearance, 0, size.width(), size.height());
}

// It reads the bounds at once, and the content only when that is written.
void drawValue(QPDF& document, QPDFObjectHandle widget)
{
    QPDFAnnotationObjectHelper annotation(widget);
    Field(shownField(document, widget)).generateAppearance(annotation);
}

} // namespace folvane::pdf
