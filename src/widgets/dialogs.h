// The modal dialogs of the windows.
#pragma once

#include <QWidget>
#include <filesystem>
#include <string>
#include <string_view>

class QMessageBox;

/// A message box with an OK button; `detail` stands beneath the message and may be empty. The texts
/// can be copied. In the middle of an operation the box takes only input made after it appeared, as
/// the dialogs below do.
void ShowMessageBox(QWidget* window, std::string_view message, std::string_view detail = {});

/// Tells the operator why an action ended early.
void ShowFailureBox(QWidget* window, std::string_view reason);

/// What all message boxes of the program share: plain text that can be selected and copied.
void MakeReadable(QMessageBox& box);
/// Room for a path on one line.
void KeepWide(QMessageBox& box);

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
/// description|pattern pairs joined by "|", the first one selected. Empty when no file was chosen.
std::string ShowFileDialog(QWidget* window, FilePlaces& places, std::string_view filters);

QString TextOf(std::string_view text);
