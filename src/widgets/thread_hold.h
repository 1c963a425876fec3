// What happens to the operator's input while an operation holds the thread.
#pragma once

/// Lives as long as an operation that lets no event through. The busy cursor shows meanwhile, and
/// what the operator did with mouse and keyboard in any window is discarded when the outermost
/// operation ends. Close requests, repaints and resizes are carried out then.
class ThreadHold {
 public:
  ThreadHold();
  ~ThreadHold();
  ThreadHold(const ThreadHold&) = delete;
  ThreadHold& operator=(const ThreadHold&) = delete;

  /// Whether what the operator asks for is discarded: an operation is ending, or waits for the
  /// answer to its dialog. Mouse and keyboard reach no window then, but a screen reader's press is
  /// a call.
  static bool RefusesActions() { return refusing_ > 0; }

  /// Lives as long as a dialog that an operation shows: the dialog takes input, but none that was
  /// made before it appeared. Does nothing outside an operation.
  class Pause {
   public:
    Pause();
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    const bool inOperation_;
  };

 private:
  static void DiscardInput();

  static inline int depth_ = 0;  // of the operations that run within each other
  static inline int refusing_ = 0;
};
