#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QTransform>

#include <initializer_list>
#include <string>

namespace folvane::pdf {

/// Fixed notation with a dot, whatever the locale.
inline std::string number(double value)
{
    return QUtil::double_to_string(value, 6);
}

inline std::string numbers(std::initializer_list<double> values)
{
    std::string text;
    for (const double value : values)
        text += (text.empty() ? "" : " ") + number(value);
    return text;
}

inline std::string matrix(const QTransform& transform)
{
    return numbers(
        {transform.m11(), transform.m12(), transform.m21(), transform.m22(), transform.dx(), transform.dy()});
}

inline QPDFObjectHandle real(double value)
{
    return QPDFObjectHandle::newReal(value, 6);
}

} // namespace folvane::pdf
