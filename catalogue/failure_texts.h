#pragma once

#include <QString>

namespace platform {
class Trap;
}

// What a message of the catalogue shows of a failure: the failure, the line of the program, and the routine
// by the name that the shop's messages give it.
QString failureText(const platform::Trap& step, const char* procedure);
// The same with an empty line before it, behind the message's own text.
QString failureTail(const platform::Trap& step, const char* procedure);
QString shortFailureTail(const platform::Trap& step);
