#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QTransform>

#include <initializer_list>
#include <string>

namespace folvane::pdf {

/// Fixed notation with a dot and six decimals at most, whatever the locale.
std::string number(double value);

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
    return QPDFObjectHandle::newReal(number(value));
}

} // namespace folvane::pdf
