#pragma once

/// Marks what the users of the membership SDK see.
#define ONDVIPSDK_EXPORT __attribute__((visibility("default")))
