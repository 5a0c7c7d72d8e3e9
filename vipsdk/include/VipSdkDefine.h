#pragma once

namespace vip_sdk {

/// The product that an account belongs to.
enum PRODUCT_ID : unsigned int {
    PRODUCT_ID_PDF = 13,
    PRODUCT_ID_TOLVA = 103,
};

} // namespace vip_sdk
