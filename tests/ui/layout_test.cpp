// Every window: what the controls are called, that each one shows all of itself, and the menus.
#include <span>

#include "ui/window_test.h"

namespace {

/// A control: its name, its caption, and its place as it was given; it may be larger than that.
struct Row {
  const char* name;
  const char* caption;  // empty for a control without one
  Twips at;
};

// clang-format off
constexpr Row kMain[] = {
    {"Command1", "VSK830V", {600, 480, 2175, 615}},
    {"Command2", "VSK630V", {600, 1440, 2175, 615}},
    {"Command3", "RTD2120", {600, 2400, 2175, 615}},
    {"Command4", "EXIT", {600, 3360, 2175, 615}},
};
constexpr Row kForm1[] = {
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
    {"Text1", "", {2280, 1080, 5655, 3015}},
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
constexpr Row kForm2[] = {
    {"Label1", "Halvern VSK Isp Writer Program", {480, 480, 3855, 375}},
    {"Label2", "Version V" ISP_WRITER_VERSION_DIGITS, {1440, 960, 1335, 375}},
    {"Label3", "Halvern Technolog Information", {600, 1440, 3495, 375}},
    {"Enter", "Enter", {480, 3840, 1095, 375}},
    {"Command1", "Back", {2760, 3840, 1095, 375}},
    {"Speed", "Speed Adjust", {360, 4560, 1080, 180}},
    {"Text2", "", {2760, 4560, 1095, 270}},
    {"HScroll1", "", {360, 4920, 3975, 255}},
    {"PortAddress", "PortAddress:", {360, 5640, 1080, 180}},
    {"Text3", "", {1680, 5520, 2655, 375}},
};
constexpr Row kForm3[] = {
    {"Label1", "Security Check", {0, 300}},
    {"Label2", "Slave Address:", {240, 960}},
    {"Text1", "", {2760, 960, 1455, 375}},
    {"Label3", "Nember Of Security Codes：", {240, 1560}},
    {"Text2", "", {2760, 1560, 1455, 375}},
    {"Label4", "First Security Code：", {240, 2160}},
    {"Text3", "", {2760, 2160, 1455, 375}},
    {"Label5", "Second Security Code：", {240, 2760}},
    {"Text4", "", {2760, 2760, 1455, 375}},
    {"Label6", "Third Security Code：", {240, 3360}},
    {"Text5", "", {2760, 3360, 1455, 375}},
    {"Label7", "Fourth Security Code：", {240, 3960}},
    {"Text6", "", {2760, 3960, 1455, 375}},
    {"Command1", "Check", {1320, 4680}},
    {"Command2", "Exit", {3360, 4680}},
};
constexpr Row kRtd2120Write[] = {
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
    {"WriteStatus", "", {120, 1920, 3735, 3375}},
    {"Frame1", "", {3960, 1800, 2055, 2415}},
    {"MainBank", "Main", {120, 360, 1575, 375}},
    {"SecondBank", "Second", {120, 1080, 1695, 375}},
    {"BothBank", "Both", {120, 1680, 1575, 375}},
    {"Frame2", "", {6120, 1800, 2055, 2415}},
    {"AutoOp", "Auto", {240, 480, 1575, 375}},
    {"EraseOp", "Erase", {240, 1680, 1575, 375}},
    {"Run", "Run", {6120, 4440, 2055, 855}},
};
// clang-format on

// Title{entries}; an entry is its name, its caption and its shortcut, with "-" before an entry that
// is greyed.
constexpr const char* kForm1Menus =
    "File{&Load File{-Lcf=Load Compress File;Lnf=Load Normal File;}"
    "&Save File{-S_tbf=Save Text Bin File;-S_bf=Save Bin File;-S_mf=Save Mi File;}"
    "Exit=E&xit Ctrl+X;}"
    "Action{-Page_Erase=Page &Erase Ctrl+E;Blank_Entire=Erase all Ctrl+B;Program=&Program Ctrl+P;"
    "-Page_Read_code=Page &Read Ctrl+R;-Show_Load_Code=&Page Load Ctrl+S;}"
    "&Help{about=&About Ctrl+A;}";
constexpr const char* kRtd2120WriteMenus = "Help{About=&About Ctrl+A;exit=&Exit Ctrl+E;}";

QString MenuText(const QWidget* menu) {
  QString text;
  for (const QAction* action : menu->actions()) {
    if (action->menu() != nullptr) {
      text += action->text() + "{" + MenuText(action->menu()) + "}";
      continue;
    }
    const QString shortcut = action->shortcut().toString();
    text += (action->isEnabled() ? "" : "-") + action->objectName() + "=" + action->text();
    text += (shortcut.isEmpty() ? "" : " ") + shortcut + ";";
  }
  return text;
}

}  // namespace

class LayoutTest : public WindowTest {
  Q_OBJECT

 private slots:
  void everyWindow() {
    desk_.emplace();
    desk_->folder.Write("program/Initial/security.cod", "");
    Start();
    Check(kLauncher, "Main", kMain, {3360, 4305});
    Check(kSecurity, "Form3", kForm3, {5715, 5265});
    QCOMPARE(kSecurity.Shown()->findChildren<QLabel*>(QStringLiteral("Label8")).size(), 6);
    kLauncher.Press("Command1");
    Check(kVskWriter, "quillon VSK830 And VSK630", kForm1, {8160, 6750}, kForm1Menus);
    kVskWriter.Choose("about");
    Check(kSettings, "Setting", kForm2, {4680, 6090});
    QCOMPARE(kSettings.Find<QLineEdit>("Text3")->maxLength(), 4);
    kLauncher.Press("Command3");
    Check(kRtdWriter, "RTD2120Write", kRtd2120Write, {8400, 5475}, kRtd2120WriteMenus);
    for (const char* button : {"Com64K", "Com64_96K"}) {
      QVERIFY(Told(kRtdWriter.Find(button), QAccessible::Description)
                  .startsWith(QStringLiteral("Loads a file")));
    }
  }

 private:
  /// Every control stands in its place, shows all of itself and covers no other; captions are said,
  /// by screen readers too.
  static void Check(const NamedWindow& named, const char* title, std::span<const Row> rows,
                    QSize clientTwips, const char* menus = "") {
    QWidget* window = named.Shown();
    QCOMPARE(window->windowTitle(), QLatin1String(title));
    const auto icons = window->windowIcon().availableSizes();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
      QVERIFY2(icons.contains(QSize(size, size)), QByteArray::number(size));
    }
    QCOMPARE(QAccessible::queryAccessibleInterface(window)->role(), QAccessible::Window);
    auto* main = qobject_cast<QMainWindow*>(window);
    QWidget* client = main != nullptr ? main->centralWidget() : window;
    QCOMPARE(client->size(), clientTwips / 15);
    QVERIFY(window->screen()->availableGeometry().contains(window->frameGeometry()));
    for (const Row& row : rows) {
      auto* widget = named.Find(row.name);
      const QSize given(PixelsOf(row.at.width), PixelsOf(row.at.height));
      QVERIFY2(widget->pos() == QPoint(PixelsOf(row.at.left), PixelsOf(row.at.top)), row.name);
      QVERIFY2(widget->size().expandedTo(given) == widget->size(), row.name);
      const QString caption = QString::fromUtf8(row.caption);
      if (caption.isEmpty()) continue;
      const QVariant groupTitle = widget->property("title");
      QCOMPARE((groupTitle.isValid() ? groupTitle : widget->property("text")).toString(), caption);
      QCOMPARE(Told(widget, QAccessible::Name), caption);
    }
    if (main != nullptr) QCOMPARE(MenuText(main->menuBar()), QString(menus));
    CheckChildren(client);
    for (QWidget* frame : client->findChildren<QGroupBox*>()) CheckChildren(frame);
  }

  static void CheckChildren(QWidget* parent) {
    const auto children = parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (qsizetype i = 0; i < children.size(); ++i) {
      QWidget* child = children[i];
      if (child->isHidden()) continue;
      const QByteArray name = child->objectName().toLatin1();
      QVERIFY2(parent->rect().contains(child->geometry()), name);
      const bool status = dynamic_cast<SpokenLabel*>(child) != nullptr;  // empty, wrapped
      QVERIFY2(status || !Told(child, QAccessible::Name).isEmpty(), name);
      const QString text = child->property("text").toString();
      const QFontMetrics font = child->fontMetrics();
      QVERIFY2(font.horizontalAdvance(text) <= child->width(), name);
      QVERIFY2(text.isEmpty() || font.height() <= child->height() + 2, name);
      for (qsizetype j = i + 1; j < children.size(); ++j) {
        QVERIFY2(children[j]->isHidden() || !child->geometry().intersects(children[j]->geometry()),
                 name + " " + children[j]->objectName().toLatin1());
      }
    }
  }
};

int ui_layout_test(int count, char** arguments) {
  return RunWindowTest<LayoutTest>(count, arguments);
}
#include "layout_test.moc"
