#pragma once

namespace PDFEdition {

/// Number of a product edition. Installations may name others: an unknown number counts as independent where a record
/// is loaded, and as none of these where an edition is asked for.
enum EDITION : int {
    Harbo = 1,
    Wrenfix = 2,
    Independent = 3,
    Cooperation = 5,
    International = 8, ///< Not the international switch of MacGlobalConfig.
};

} // namespace PDFEdition
