#include "codes/links/shorteners.h"

namespace folvane {

const QSet<QString>& shorteners()
{
    static const QSet<QString> names{
        "adf.ly",      "bit.ly", "bl.ink",   "buff.ly",     "clck.ru", "cutt.ly", "dlvr.it", "goo.gl",
        "goo.su",      "ift.tt", "is.gd",    "j.mp",        "lnkd.in", "ow.ly",   "qrco.de", "rb.gy",
        "rebrand.ly",  "s.id",   "short.gy", "shorturl.at", "snip.ly", "t.co",    "t.ly",    "tiny.cc",
        "tinyurl.com", "tr.im",  "trib.al",  "u.to",        "urlz.fr", "v.gd"};
    return names;
}

} // namespace folvane
