// Keeps a second copy of a program from what the first one uses.
#pragma once

#include <memory>
#include <string>

/// Held as long as the object lives; the system lets go when the process ends, whatever ends it.
class SingleUse {
 public:
  virtual ~SingleUse() = default;
};

/// `what`: a name made of letters, digits and "-", the same for every user of the PC. Null when
/// somebody holds it at this moment. Where no lock can be kept at all it is given without one.
std::unique_ptr<SingleUse> HoldAlone(const std::string& what);
