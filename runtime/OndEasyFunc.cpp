#include "runtime/OndEasyFunc.h"

namespace ondeasy {

// Here, so that the class has one virtual table for all that use the library.
IFunc::~IFunc() = default;

} // namespace ondeasy
