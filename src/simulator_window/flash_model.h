// A chip's flash as table cells: a row of 16 bytes under their address, and the row as characters.
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <vector>

#include "simulator/flash.h"

namespace simulator {

/// Shows the flash as it was at the last `Update`; the bytes that this one changed are highlighted.
class FlashModel final : public QAbstractTableModel {
 public:
  static constexpr int kBytesPerRow = 16;

  FlashModel(const Flash& flash, QObject* parent);

  /// Does nothing while the flash is as it was.
  void Update();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::size_t AddressOf(const QModelIndex& index) const;
  QString Characters(std::size_t first) const;

  const Flash& flash_;
  std::uint64_t version_;
  std::vector<std::uint8_t> shown_;
  std::vector<std::uint8_t> before_;  // what was shown before the last change
};

}  // namespace simulator
