#pragma once

#include <QWidget>

class QLineEdit;

namespace folvane {

class CheckeredPicture;

/// What became of a picture, and the name that it gets.
class StampPreview : public QWidget {
    Q_OBJECT

public:
    explicit StampPreview(QWidget* parent = nullptr);

    /// Shows them, and gives the keyboard to the name, so that it can be typed over.
    void showPicture(const QImage& picture, const QString& name);
    QString name() const;

private:
    CheckeredPicture* m_picture;
    QLineEdit* m_name;
};

} // namespace folvane
