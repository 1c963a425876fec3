// How what can fail says so: with a `Status`, or with a `Result` where there is a value besides.
#pragma once

#include <string>
#include <utility>

#include "platform/problem.h"

/// Success, or a failure with its reason.
class [[nodiscard]] Status {
 public:
  Status() = default;  // success
  /// `reason`: for the operator; empty when there is nothing to tell. `cause`: what is behind it,
  /// where the reason alone does not say.
  static Status Failed(std::string reason, std::string cause = {}) {
    return {Kind::Failed, std::move(reason), std::move(cause)};
  }
  /// What was asked for does not exist.
  static Status Missing(std::string reason) { return {Kind::Missing, std::move(reason), {}}; }
  /// A call of the system's, by its name, that returned this: minus its errno when it failed.
  static Status OfCall(const char* name, int result) {
    if (result >= 0) return {};
    Status failed = Failed(std::string(name) + ": " + ErrorText(-result));
    failed.error_ = -result;
    return failed;
  }

  /// Of a further step that is done in any case: the first failure stays.
  void Also(Status step) {
    if (Ok()) *this = std::move(step);
  }

  bool Ok() const { return kind_ == Kind::Ok; }
  bool IsMissing() const { return kind_ == Kind::Missing; }
  /// Empty on success, as is the cause.
  const std::string& Reason() const { return reason_; }
  const std::string& Cause() const { return cause_; }
  /// The errno of a call that failed; 0 for any other failure.
  int Error() const { return error_; }

 private:
  enum class Kind { Ok, Failed, Missing };
  Status(Kind kind, std::string reason, std::string cause)
      : kind_(kind), reason_(std::move(reason)), cause_(std::move(cause)) {}

  Kind kind_ = Kind::Ok;
  std::string reason_;
  std::string cause_;
  int error_ = 0;
};

/// A value, or a failure in its place.
template <typename T>
class [[nodiscard]] Result : public Status {
 public:
  Result(T value) : value_(std::move(value)) {}
  Result(Status failure) : Status(std::move(failure)) {}

  /// `T{}` for a failure.
  const T& operator*() const { return value_; }
  T& operator*() { return value_; }
  const T* operator->() const { return &value_; }
  T* operator->() { return &value_; }

 private:
  T value_{};
};
