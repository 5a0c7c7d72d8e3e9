#pragma once

/// What has to end when the process exits, in this order, which does not depend on what was made first. Everything else
/// that may still be asked by then is never destroyed.
enum class ProcessEnd {
    requests, ///< first, since they use the account
    account,
};

/// Has `end` called at exit, in the turn of `what`, on a thread of its own. The process waits for all of them together,
/// but not for ever: what they wait for may wait for the thread that exits.
void atProcessEnd(ProcessEnd what, void (*end)());
