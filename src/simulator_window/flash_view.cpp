#include "simulator_window/flash_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "simulator_window/hex_spin_box.h"
#include "widgets/guarded.h"

namespace simulator {

FlashView::FlashView(const Flash& flash) : model_(flash, this), table_(new QTableView(this)) {
  table_->setModel(&model_);
  table_->setObjectName(QStringLiteral("Cells"));
  table_->setAccessibleName(QStringLiteral("Flash contents"));
  QFont font(QStringLiteral("Liberation Mono"));
  font.setStyleHint(QFont::Monospace);
  font.setPixelSize(12);
  table_->setFont(font);
  table_->setShowGrid(false);
  table_->setTabKeyNavigation(false);
  const QFontMetrics text(font);
  table_->verticalHeader()->setFont(font);
  table_->verticalHeader()->setDefaultSectionSize(text.height() + 1);
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  QHeaderView* columns = table_->horizontalHeader();
  columns->setFont(font);
  columns->setMinimumSectionSize(1);
  columns->setDefaultSectionSize(text.horizontalAdvance(QStringLiteral("00")) + 8);
  columns->setSectionResizeMode(QHeaderView::Fixed);
  columns->setStretchLastSection(true);
  table_->setMinimumHeight(6 * text.height());

  auto* address = new HexSpinBox;
  address->setObjectName(QStringLiteral("GoTo"));
  address->setAccessibleName(QStringLiteral("Go to address (hex)"));
  address->setRange(0, static_cast<int>(flash.Cells().size()) - 1);
  connect(address, &QSpinBox::valueChanged, this,
          Guarded(this, [this, address] { GoTo(address->value()); }));

  auto* goTo = new QHBoxLayout;
  goTo->addWidget(new QLabel(QStringLiteral("Go to address (hex)")));
  goTo->addWidget(address);
  goTo->addStretch();
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(4, 4, 4, 4);
  rows->addLayout(goTo);
  rows->addWidget(table_, 1);
}

void FlashView::GoTo(int address) {
  const int row = address / FlashModel::kBytesPerRow;
  const QModelIndex cell = model_.index(row, address % FlashModel::kBytesPerRow);
  table_->setCurrentIndex(cell);
  table_->scrollTo(cell, QAbstractItemView::PositionAtTop);
}

}  // namespace simulator
