#include "controls/texts/SelectableText.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

constexpr int originalProperty = QTextFormat::UserProperty;
constexpr int numberProperty =
    QTextFormat::UserProperty + 1; // so that equal neighbours stay pieces of their own
constexpr int usualWidth = 400;

QTextOption wrapping(std::optional<Qt::LayoutDirection> direction)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(direction.value_or(Qt::LayoutDirectionAuto));
    return option;
}

/// What of the fragment lies between the two positions of the document.
QString originalOf(const QTextFragment& fragment, int from, int to)
{
    const int begin = std::max(from - fragment.position(), 0);
    const int end = std::min(to - fragment.position(), fragment.length());
    if (begin >= end)
        return {};
    const QTextCharFormat format = fragment.charFormat();
    return format.hasProperty(originalProperty) ? format.stringProperty(originalProperty)
                                                : fragment.text().mid(begin, end - begin);
}

} // namespace

SelectableText::SelectableText(std::optional<Qt::LayoutDirection> direction, QWidget* parent)
    : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::ClickFocus);
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(Qt::IBeamCursor);
    document()->setDocumentMargin(0);
    document()->setUndoRedoEnabled(false);
    document()->setDefaultTextOption(wrapping(direction));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void SelectableText::append(const QString& shown, const QTextCharFormat& format,
                            const std::optional<QString>& original)
{
    QTextCharFormat own = format;
    if (original) {
        own.setProperty(originalProperty, *original);
        own.setProperty(numberProperty, ++m_stands);
    }
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(shown, own);
    m_measured = {};
    updateGeometry();
}

int SelectableText::heightForWidth(int width) const
{
    if (m_measured.width() != width) {
        const std::unique_ptr<QTextDocument> copy(document()->clone()); // layouts ask before they decide
        copy->setTextWidth(width);
        m_measured = {width, static_cast<int>(std::ceil(copy->size().height()))};
    }
    return m_measured.height();
}

QSize SelectableText::sizeHint() const
{
    return {usualWidth, heightForWidth(std::max(width(), usualWidth))};
}

void SelectableText::letKeyboardIn()
{
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setFocusPolicy(Qt::StrongFocus);
}

// It has nothing to scroll: what does not concern its selection goes to what lies around it.
void SelectableText::keyPressEvent(QKeyEvent* event)
{
    const bool isMine = event->matches(QKeySequence::Copy) || event->matches(QKeySequence::SelectAll);
    if (isMine || textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard))
        QTextEdit::keyPressEvent(event);
    else
        event->ignore();
}

void SelectableText::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

QMimeData* SelectableText::createMimeDataFromSelection() const
{
    const int from = textCursor().selectionStart();
    const int to = textCursor().selectionEnd();
    QString text;
    for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() < to;
         block = block.next()) {
        if (block.position() > from)
            text += u'\n';
        for (auto part = block.begin(); !part.atEnd(); ++part)
            text += originalOf(part.fragment(), from, to);
    }
    auto* data = new QMimeData;
    data->setText(text);
    return data;
}

} // namespace folvane
