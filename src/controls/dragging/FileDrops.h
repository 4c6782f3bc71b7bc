#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

class QDropEvent;
class QWidget;

namespace folvane {

/// Lets local files be dropped on a widget, as copies; anything else is left to what lies around it.
class FileDrops : public QObject {
    Q_OBJECT

public:
    explicit FileDrops(QWidget& target);

    /// Files hang over the widget.
    bool areOver() const { return m_areOver; }

signals:
    /// areOver() is another than before.
    void overChanged();
    void dropped(QList<QUrl> files);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool enter(QDropEvent& event);
    bool drop(QDropEvent& event);
    void setOver(bool over);

    bool m_areOver = false;
};

} // namespace folvane
