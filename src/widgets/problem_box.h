// Tells the operator in passing: what cannot work, for instance the parallel port, and what is odd.
#pragma once

#include <string>

/// Shows the message in a box that blocks no other window. The box appears when the event loop gets
/// its next turn, so this may be called in the middle of a line operation.
void PostProblem(const std::string& message);
/// The same for what a file holds that was loaded.
void PostFileNotes(const std::string& notes);
