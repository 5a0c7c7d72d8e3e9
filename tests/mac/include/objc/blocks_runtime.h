#pragma once

// Where Foundation looks for the functions behind blocks when the compiler has them.
#include <Block.h>
