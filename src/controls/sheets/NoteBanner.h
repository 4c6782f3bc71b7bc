#pragma once

#include <QLabel>

namespace folvane {

/// A note on a coloured ground, with a symbol; its text wraps. Screen readers read it as a text.
class NoteBanner : public QLabel {
    Q_OBJECT

public:
    enum class Tone { Info, Warning, Danger };

    NoteBanner(const QString& text, Tone tone, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Tone m_tone;
};

} // namespace folvane
