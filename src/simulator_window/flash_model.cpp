#include "simulator_window/flash_model.h"

#include <QColor>

#include "text/hex_text.h"
#include "widgets/dialogs.h"

namespace simulator {
namespace {

const QColor kChanged(255, 224, 130);

}  // namespace

FlashModel::FlashModel(const Flash& flash, QObject* parent)
    : QAbstractTableModel(parent),
      flash_(flash),
      version_(flash.Version()),
      shown_(flash.Cells()),
      before_(flash.Cells()) {}

void FlashModel::Update() {
  if (version_ == flash_.Version()) return;
  version_ = flash_.Version();
  before_ = std::exchange(shown_, flash_.Cells());
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int FlashModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size()) / kBytesPerRow;
}

int FlashModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kBytesPerRow + 1;
}

std::size_t FlashModel::AddressOf(const QModelIndex& index) const {
  const int address = index.row() * kBytesPerRow + index.column();
  return static_cast<std::size_t>(address);
}

QVariant FlashModel::data(const QModelIndex& index, int role) const {
  const bool characters = index.column() == kBytesPerRow;
  const std::size_t address = AddressOf(index);
  if (role == Qt::DisplayRole) {
    return characters ? Characters(address - kBytesPerRow) : TextOf(PaddedHex(shown_[address], 2));
  }
  if (role == Qt::TextAlignmentRole) {
    return QVariant(Qt::AlignVCenter | (characters ? Qt::AlignLeft : Qt::AlignHCenter));
  }
  if (characters) return {};
  const bool changed = shown_[address] != before_[address];
  if (role == Qt::BackgroundRole && changed) return kChanged;
  if (role == Qt::AccessibleDescriptionRole && changed) return QStringLiteral("changed");
  return {};
}

QVariant FlashModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return TextOf(PaddedHex(section * kBytesPerRow, 4));
  return section == kBytesPerRow ? QStringLiteral("Characters") : TextOf(HexText(section));
}

QString FlashModel::Characters(std::size_t first) const {
  QString text;
  for (std::size_t i = first; i < first + kBytesPerRow; ++i) {
    const bool printable = shown_[i] >= 0x20 && shown_[i] < 0x7F;
    text += QLatin1Char(printable ? static_cast<char>(shown_[i]) : '.');
  }
  return text;
}

}  // namespace simulator
