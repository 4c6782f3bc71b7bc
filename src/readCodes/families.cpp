#include "readCodes/families.h"

namespace folvane {

bool isArea(CodeSymbology symbology)
{
    switch (symbology) {
    case CodeSymbology::Qr:
    case CodeSymbology::MicroQr:
    case CodeSymbology::Aztec:
    case CodeSymbology::DataMatrix:
    case CodeSymbology::Pdf417: return true;
    default: return false;
    }
}

} // namespace folvane
