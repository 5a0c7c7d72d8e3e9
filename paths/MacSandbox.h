#pragma once

#include "config/Export.h"

#include <string>

/// The macOS app sandbox, and what stands in its place where there is none.
///
/// All static. What is found out once (sandbox flag, home folder, container of each group) is kept for the life of the
/// process: a later change of the environment or of the switches is not seen. Functions never throw. Texts are UTF-8.
class ONDPDFTOOLUTILS_EXPORT MacSandbox
{
public:
    /// Whether sandbox mode is on. Callable from any thread.
    static bool isSandBox();
    /// The application group of the product, and the same followed by "/".
    static std::string appGroupId();
    static std::string appGroupIdPath();

    /// The user's real home folder, also from inside the sandbox, where HOME names the container: from the user
    /// database, else the first two folders of HOME, else "/Users/" + USER.
    static std::string getHomePath();

    /// The root of the container that the applications of a group share, without a trailing "/"; an empty `groupId`
    /// means appGroupId(). Where the platform knows no such container, a folder below getHomePath(). Not created here.
    /// Not safe to call from several threads at once.
    static std::string getSharedPath(const std::string &groupId);
};
