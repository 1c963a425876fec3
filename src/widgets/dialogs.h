// The dialogs of the windows.
#pragma once

#include <QWidget>
#include <filesystem>
#include <string>
#include <string_view>

/// A message box with an OK button; `detail` stands beneath the message and may be empty. The texts
/// can be copied. In the middle of an operation the box takes only input made after it appeared, as
/// the dialogs below do.
void ShowMessageBox(QWidget* window, std::string_view message, std::string_view detail = {});

/// Tells the operator why an action ended early.
void ShowFailureBox(QWidget* window, std::string_view reason);

/// Tells the operator in passing, in a box that blocks no other window, what cannot work, for
/// instance the parallel port. The box appears when the event loop gets its next turn, so this may
/// be called in the middle of a line operation.
void PostProblem(const std::string& message);
/// The same for what is odd in a file that was loaded.
void PostFileNotes(const std::string& notes);

/// A message box with OK and Cancel, Cancel being the default. True for OK.
bool ShowQuestionBox(QWidget* window, std::string_view message);

/// An input box with a prompt, a title and a default answer. Empty when cancelled.
std::string ShowInputBox(QWidget* window, std::string_view prompt, std::string_view title,
                         std::string_view answer);

/// Where the operator finds files.
struct FilePlaces {
  std::filesystem::path programFolder;  // the file dialog begins here
  std::filesystem::path samples = {};   // offered beside it; may be missing
  QString lastUsed = {};                // folder of the file chosen last, kept by the file dialog
};

/// The file-open dialog on the program's folder, with the other places in its side bar. `filters`:
/// each ends with its pattern in parentheses; the first is selected. Empty when no file was chosen.
std::string ShowFileDialog(QWidget* window, FilePlaces& places, const QStringList& filters);

QString TextOf(std::string_view text);
