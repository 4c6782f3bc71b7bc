#pragma once

// The only place that includes libqpdf. Its JSON header needs a type that is still incomplete there, which clang
// refuses in C++20 with this standard library; nothing here uses qpdf's JSON, so a declaration stands in for it.
#define JSON_HH
class JSON;

#include <qpdf/InputSource.hh>
#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Buffer.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFAnnotationObjectHelper.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFFormFieldObjectHelper.hh>
#include <qpdf/QPDFNumberTreeObjectHelper.hh>
#include <qpdf/QPDFObjGen.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>

#include <functional>
#include <unordered_map>
#include <unordered_set>

namespace folvane::pdf {

struct ObjGenHash {
    size_t operator()(const QPDFObjGen& og) const
    {
        return std::hash<long long>()((static_cast<long long>(og.getObj()) << 20) ^ og.getGen());
    }
};

using ObjGenSet = std::unordered_set<QPDFObjGen, ObjGenHash>;
template <typename T> using ObjGenMap = std::unordered_map<QPDFObjGen, T, ObjGenHash>;

} // namespace folvane::pdf
