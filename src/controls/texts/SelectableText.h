#pragma once

#include <QTextCharFormat>
#include <QTextEdit>

#include <optional>

namespace folvane {

/// A text that can be selected and copied, as wide as its place and as high as it needs; long words break anywhere. What is shown
/// may stand for something else, which is then copied.
class SelectableText : public QTextEdit {
    Q_OBJECT

public:
    /// Without a direction, each paragraph runs as its first letters do.
    explicit SelectableText(std::optional<Qt::LayoutDirection> direction, QWidget* parent = nullptr);

    /// `original`: what is copied in its place; it is then selected as a whole.
    void append(const QString& shown, const QTextCharFormat& format,
                const std::optional<QString>& original = std::nullopt);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {}; }

    /// The Tab key stops at it, and it is selected by keys: for what is too long to be spoken with its card.
    void letKeyboardIn();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    int m_stands = 0;         ///< how many pieces stand for something else
    mutable QSize m_measured; ///< what heightForWidth() came to last
};

} // namespace folvane
