// Tells the operator what cannot work, for instance the parallel port.
#pragma once

#include <string>

/// Shows the message in a box that blocks no other window. The box appears when the event loop gets
/// its next turn, so this may be called in the middle of a line operation.
void PostProblem(const std::string& message);
