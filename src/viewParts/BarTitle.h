#pragma once

#include <QWidget>

namespace folvane {

class ElidedLabel;

/// What a bar begins with: a title over a detail, a line each.
class BarTitle : public QWidget {
public:
    explicit BarTitle(QWidget* parent);

    void setTitle(const QString& title);
    void setDetail(const QString& detail);

private:
    ElidedLabel* m_title;
    ElidedLabel* m_detail;
};

} // namespace folvane
