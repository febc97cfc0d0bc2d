// A value as it reads back after writing: infinities are written as null.
#pragma once

#include "store/json.h"

#include <cmath>

inline Json asWritten(const Json& v) {
    Json out = v;
    if (out.isNumber() && !std::isfinite(out.num)) return Json();
    for (Json& e : out.arr)
        e = asWritten(e);
    for (auto& member : out.obj)
        member.second = asWritten(member.second);
    return out;
}
