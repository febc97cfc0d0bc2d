// The text a call fails with, so that a row can state the exact message.
#pragma once

#include <stdexcept>
#include <string>

template <typename F> std::string errorOf(F&& call) {
    try {
        call();
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "(no error)";
}
