// The modal dialogs of the windows.
#pragma once

#include <QWidget>
#include <filesystem>
#include <string>
#include <string_view>

/// A message box with an OK button; `detail` stands beneath the message and may be empty.
void ShowMessageBox(QWidget* window, std::string_view message, std::string_view detail = {});

/// A message box with OK and Cancel, Cancel being the default. True for OK.
bool ShowQuestionBox(QWidget* window, std::string_view message);

/// An input box with a prompt, a title and a default answer. Empty when cancelled.
std::string ShowInputBox(QWidget* window, std::string_view prompt, std::string_view title,
                         std::string_view answer);

/// The file-open dialog on `folder`. `filters`: description|pattern pairs joined by "|", the first
/// one selected. Empty when no file was chosen.
std::string ShowFileDialog(QWidget* window, const std::filesystem::path& folder,
                           std::string_view filters);

QString TextOf(std::string_view text);
