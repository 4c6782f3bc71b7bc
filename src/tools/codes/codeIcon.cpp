#include "tools/codes/codeIcon.h"

#include <QHash>

namespace folvane {

Icon codeIcon(const CodeContent& content)
{
    static const QHash<QString, Icon> icons{{"link", Icon::Link},
                                            {"wifi", Icon::WiFi},
                                            {"person.crop.circle", Icon::Account},
                                            {"calendar", Icon::Calendar},
                                            {"phone", Icon::Phone},
                                            {"message", Icon::Message},
                                            {"envelope", Icon::Envelope},
                                            {"mappin.and.ellipse", Icon::Place},
                                            {"book", Icon::Book},
                                            {"barcode", Icon::Bars},
                                            {"text.alignleft", Icon::Text}};
    return icons.value(systemImage(content), Icon::Text);
}

} // namespace folvane
