#pragma once

/// Has Qt's fatal errors, such as that there is no display, end `program` with a line on standard error and status 1.
/// By itself it would abort.
void endInsteadOfAborting(const char *program);
