#pragma once
// What each call of the head boards' library does to the machine: one table, one function a call.

#include "common/HeadProtocol.h"

#include <QByteArray>
#include <vector>

class Machine;

namespace heads
{
using Numbers = std::vector<double>;

/// Carries a call out and fills the numbers of its answer; an error number of the library.
int runCall(Machine &machine, Op op, const Numbers &arguments, Numbers *answer);
/// Takes a picture whose planes stand one behind the other, support first.
int armPicture(Machine &machine, const Numbers &arguments, const QByteArray &planes);
} // namespace heads
