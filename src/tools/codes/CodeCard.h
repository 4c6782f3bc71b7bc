#pragma once

#include "codes/content/CodeContent.h"
#include "controls/containers/Panel.h"
#include "documents/AppModel.h"

namespace folvane {

class Button;
class SelectableText;

/// What one code says, where it was found, and what can be done with it.
class CodeCard : public Panel {
    Q_OBJECT

public:
    CodeCard(AppModel& model, FoundCode code, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addHead();
    void add(const codes::Link& link);
    void add(const codes::WiFi& network);
    template <typename Content> void add(const Content&) { addPayload(); }
    void addPayload();
    void addField(const QString& title, const QString& value);
    void addText(SelectableText& text, const QString& spokenName);
    void addRealSite(const QString& text);
    void addButtons(const QList<Button*>& buttons);
    Button* makeCopyButton(const QString& title, const QString& text);
    Button* makeOpenButton(const QUrl& url);
    void copy(const QString& text);
    QString originLine() const;

    AppModel& m_model;
    const FoundCode m_code;
    const CodeContent m_content;
};

} // namespace folvane
