// Property lists of other applications, in both formats: reading a text ends soon, within the list's bytes.

#include "paths/platform/generic/PropertyList_p.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    static_cast<void>(platform::generic::textInPropertyList(bytes, "CFBundleName"));
    return 0;
}
