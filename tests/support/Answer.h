#pragma once

/// A function or method of a stand-in that answers what an expression is worth.
#define ANSWER(function, ...)                                                                                          \
    function                                                                                                           \
    {                                                                                                                  \
        return __VA_ARGS__;                                                                                            \
    }
