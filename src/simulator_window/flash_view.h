// One flash bank as a table that can be paged through, with a box to go to an address.
#pragma once

#include <QTableView>
#include <QWidget>

#include "simulator_window/flash_model.h"

namespace simulator {

class FlashView final : public QWidget {
 public:
  explicit FlashView(const Flash& flash);

  /// Shows the flash as it is now. The place that is shown stays.
  void Update() { model_.Update(); }

 private:
  void GoTo(int address);

  FlashModel model_;
  QTableView* table_;
};

}  // namespace simulator
