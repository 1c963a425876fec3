// Captions and places of all controls, and the menus: what the operator finds where.
#include <QMenu>
#include <vector>

#include "ui/window_test.h"

namespace {

struct Control {
  const char* name;
  const char* caption;
  Twips at;
};

struct Item {
  const char* name;
  const char* caption;
  const char* shortcut;
  bool enabled;
};

const std::vector<Control> kForm1{
    {"Label1", "Halvern Technology Inc", {3240, 0, 3735, 375}},
    {"Label6", "VSK830 AND VSK630 ISP TOOL V3.10", {3360, 480, 3495, 375}},
    {"Command1", "Load File", {120, 240, 1815, 495}},
    {"Frame3", "isp operate", {120, 960, 1815, 2055}},
    {"Option6", "Page Erase", {120, 240, 1575, 255}},
    {"Option7", "Erase All", {120, 600, 1575, 180}},
    {"Option8", "Program", {120, 960, 1575, 180}},
    {"Option9", "Page Read", {120, 1320, 1575, 180}},
    {"Option10", "Page Load", {120, 1680, 1575, 180}},
    {"Frame1", "Select", {120, 3120, 1815, 975}},
    {"Option1", "VSK830", {120, 240, 1455, 255}},
    {"Option2", "VSK630", {120, 600, 1575, 255}},
    {"Text1", nullptr, {2280, 1080, 5655, 3015}},
    {"Label7", "MCU File", {120, 4320}},
    {"Text2", "", {1320, 4320, 6615, 270}},
    {"Label8", "MaxAddress", {120, 4920}},
    {"Text4", "", {1320, 4920, 1215, 270}},
    {"checksum", "CheckSum", {120, 5280}},
    {"Text3", "", {1320, 5280, 1215, 270}},
    {"Label9", "S/W CRC", {120, 5640}},
    {"Text5", "", {1320, 5640, 1215, 270}},
    {"Label10", "H/W CRC", {120, 6000}},
    {"Text6", "", {1320, 6000, 1215, 270}},
    {"Frame2", "isp mode", {3120, 4920, 1815, 855}},
    {"Option4", "go to isp mode", {120, 240, 1575, 255}},
    {"Option5", "quit isp mode", {120, 600, 1575, 180}},
    {"Command4", "Run", {3120, 6120, 1815, 495}},
    {"Label5", "Isp Operate Status", {6240, 4680}},
    {"Label3", "", {6120, 5040, 1695, 495}},
    {"Label4", "Isp Mode Status", {6240, 5760}},
    {"Label2", "", {6120, 6120, 1695, 495}},
};

const std::vector<Control> kForm2{
    {"Label1", "Halvern VSK Isp Writer Program", {480, 480, 3855, 375}},
    {"Label2", "Version V100", {1440, 960, 1335, 375}},
    {"Label3", "Halvern Technolog Information", {600, 1440, 3495, 375}},
    {"Enter", "Enter", {480, 3840, 1095, 375}},
    {"Command1", "Back", {2760, 3840, 1095, 375}},
    {"Speed", "Speed Adjust", {360, 4560, 1080, 180}},
    {"Text2", "2", {2760, 4560, 1095, 270}},
    {"HScroll1", nullptr, {360, 4920, 3975, 255}},
    {"PortAddress", "PortAddress:", {360, 5640, 1080, 180}},
    {"Text3", "378", {1680, 5520, 2655, 375}},
};

const std::vector<Control> kRtdWriter{
    {"Label1", "File Name", {1200, 480, 810, 180}},
    {"Label2", "Max Address", {4920, 480, 990, 180}},
    {"Label5", "CheckSum", {6120, 480, 720, 180}},
    {"Label3", "Load File", {7080, 480, 810, 180}},
    {"Bank1File", "", {120, 840, 4935, 375}},
    {"Bank1MaxAddr", "", {5160, 840, 735, 375}},
    {"Bank1CheckSum", "", {6000, 840, 855, 375}},
    {"Com64K", "64K", {6960, 840, 1215, 375}},
    {"Bank2File", "", {120, 1320, 4935, 375}},
    {"Bank2MaxAddr", "", {5160, 1320, 735, 375}},
    {"Bank2CheckSum", "", {6000, 1320, 855, 375}},
    {"Com64_96K", "64~96K", {6960, 1320, 1215, 375}},
    {"WriteStatus", nullptr, {120, 1920, 3735, 3375}},
    {"Frame1", "", {3960, 1800, 2055, 2415}},
    {"MainBank", "Main", {120, 360, 1575, 375}},
    {"SecondBank", "Second", {120, 1080, 1695, 375}},
    {"BothBank", "Both", {120, 1680, 1575, 375}},
    {"Frame2", "", {6120, 1800, 2055, 2415}},
    {"AutoOp", "Auto", {240, 480, 1575, 375}},
    {"EraseOp", "Erase", {240, 1680, 1575, 375}},
    {"Run", "Run", {6120, 4440, 2055, 855}},
};

const std::vector<Item> kForm1Items{
    {"Lcf", "Load Compress File", "", false},
    {"Lnf", "Load Normal File", "", true},
    {"S_tbf", "Save Text Bin File", "", false},
    {"S_bf", "Save Bin File", "", false},
    {"S_mf", "Save Mi File", "", false},
    {"Exit", "E&xit", "Ctrl+X", true},
    {"Page_Erase", "Page &Erase", "Ctrl+E", false},
    {"Blank_Entire", "Erase all", "Ctrl+B", true},
    {"Program", "&Program", "Ctrl+P", true},
    {"Page_Read_code", "Page &Read", "Ctrl+R", false},
    {"Show_Load_Code", "&Page Load", "Ctrl+S", false},
    {"about", "&About", "Ctrl+A", true},
};

}  // namespace

class LayoutTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    ApplyApplicationStyle();
    desk_ = std::make_unique<Desk>();
    desk_->Start();
    Desk::Press("Main", "Command1");
  }
  void cleanupTestCase() { desk_.reset(); }

  void everyWindowHasTheIconInAllSizes() {
    const QIcon icon = Desk::Window("Form1")->windowIcon();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
      QVERIFY2(icon.availableSizes().contains(QSize(size, size)),
               qPrintable(QString::number(size)));
    }
  }

  void form1() {
    Check("Form1", kForm1, {8160, 6750});
    const QList<QMenu*> menus = Desk::Window("Form1")->findChildren<QMenu*>();
    QStringList titles;
    for (const QMenu* menu : menus) titles << menu->title();
    titles.removeAll(QString());  // the menu bar's own overflow menu
    QCOMPARE(titles, (QStringList{"File", "&Load File", "&Save File", "Action", "&Help"}));
    for (const Item& item : kForm1Items) {
      const auto* action = Desk::Find<QAction>("Form1", item.name);
      QCOMPARE(action->text(), QString(item.caption));
      QCOMPARE(action->shortcut(), QKeySequence(item.shortcut));
      QCOMPARE(action->isEnabled(), item.enabled);
    }
  }

  void form2() {
    Desk::Find<QAction>("Form1", "about")->trigger();
    QCOMPARE(Desk::Window("Form2")->size(), QSize(4680 / 15, 6090 / 15));
    Check("Form2", kForm2, {});
    QCOMPARE(Desk::Find<QLineEdit>("Form2", "Text3")->maxLength(), 4);
    Desk::Window("Form2")->close();
  }

  void rtdWriter() {
    Desk::Press("Main", "Command3");
    Check("RTD2120Write", kRtdWriter, {8400, 5475});
    QCOMPARE(Desk::Find<QAction>("RTD2120Write", "About")->shortcut(), QKeySequence("Ctrl+A"));
    QCOMPARE(Desk::Find<QAction>("RTD2120Write", "exit")->shortcut(), QKeySequence("Ctrl+E"));
  }

 private:
  /// Every control stands at its place, says its caption, and shows all of it.
  static void Check(const char* window, const std::vector<Control>& controls, QSize clientTwips) {
    if (!clientTwips.isEmpty()) {
      const auto* client = static_cast<QMainWindow*>(Desk::Window(window))->centralWidget();
      QCOMPARE(client->size(), clientTwips / 15);
    }
    for (const Control& control : controls) {
      const auto* widget = Desk::Find<QWidget>(window, control.name);
      const QVariant title = widget->property("title");
      if (control.caption != nullptr) {
        QCOMPARE((title.isValid() ? title : widget->property("text")).toString(),
                 QString(control.caption));
      }
      QVERIFY2(title.toString() == control.caption || !widget->accessibleName().isEmpty() ||
                   control.caption == QLatin1String(""),
               control.name);
      const QPoint place(PixelsOf(control.at.left), PixelsOf(control.at.top));
      QVERIFY2(widget->pos() == place, control.name);
      const QSize given(PixelsOf(control.at.width), PixelsOf(control.at.height));
      QVERIFY2(widget->size().expandedTo(given) == widget->size(), control.name);
      const bool grown = widget->width() > given.width() && given.width() > 0;
      QVERIFY2(!grown || widget->inherits("QLabel"), control.name);
    }
  }

  std::unique_ptr<Desk> desk_;
};

QTEST_MAIN(LayoutTest)
#include "layout_test.moc"
