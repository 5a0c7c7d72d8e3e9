#pragma once

#include <filesystem>

/// What `ask` answers; an empty answer (false for a switch) when the running executable was removed before anything was
/// found out: then nothing can be located any more.
template <typename Ask> auto located(Ask ask) -> decltype(ask())
{
    try {
        return ask();
    } catch (const std::filesystem::filesystem_error &) {
        return {};
    }
}
