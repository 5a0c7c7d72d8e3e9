#pragma once

#include_next <netinet/in.h>

/// The length byte that Darwin's addresses begin with; Linux has spare bytes.
#define sin_len sin_zero[0]
