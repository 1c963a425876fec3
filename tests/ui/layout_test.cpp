// Every window: what the controls are called, that each one shows all of itself, and the menus.
#include <QGroupBox>
#include <QMenu>
#include <utility>
#include <vector>

#include "ui/window_test.h"

namespace {

using Captions = std::vector<std::pair<const char*, const char*>>;

const Captions kForm1{
    {"Command1", "Load File"}, {"Frame3", "isp operate"},     {"Option6", "Page Erase"},
    {"Option7", "Erase All"},  {"Option8", "Program"},        {"Option9", "Page Read"},
    {"Option10", "Page Load"}, {"Frame1", "Select"},          {"Option1", "VSK830"},
    {"Option2", "VSK630"},     {"Label7", "MCU File"},        {"Label8", "MaxAddress"},
    {"checksum", "CheckSum"},  {"Label9", "S/W CRC"},         {"Label10", "H/W CRC"},
    {"Frame2", "isp mode"},    {"Option4", "go to isp mode"}, {"Option5", "quit isp mode"},
    {"Command4", "Run"},       {"Label4", "Isp Mode Status"}, {"Label5", "Isp Operate Status"}};
const Captions kForm1Heading{{"Label1", "Halvern Technology Inc"},
                             {"Label6", "VSK830 AND VSK630 ISP TOOL V3.10"}};
const Captions kForm2{{"Label1", "Halvern VSK Isp Writer Program"},
                      {"Label2", "Version V100"},
                      {"Label3", "Halvern Technolog Information"},
                      {"Enter", "Enter"},
                      {"Command1", "Back"},
                      {"Speed", "Speed Adjust"},
                      {"PortAddress", "PortAddress:"}};
const Captions kForm3{{"Label1", "Security Check"},
                      {"Label2", "Slave Address:"},
                      {"Label3", "Nember Of Security Codes："},
                      {"Label4", "First Security Code："},
                      {"Label5", "Second Security Code："},
                      {"Label6", "Third Security Code："},
                      {"Label7", "Fourth Security Code："},
                      {"Command1", "Check"},
                      {"Command2", "Exit"}};
const Captions kRtdWriter{
    {"Label1", "File Name"}, {"Label2", "Max Address"}, {"Label5", "CheckSum"},
    {"Label3", "Load File"}, {"Com64K", "64K"},         {"Com64_96K", "64~96K"},
    {"MainBank", "Main"},    {"SecondBank", "Second"},  {"BothBank", "Both"},
    {"AutoOp", "Auto"},      {"EraseOp", "Erase"},      {"Run", "Run"}};
const Captions kMain{{"Command1", "VSK830V"},
                     {"Command2", "VSK630V"},
                     {"Command3", "RTD2120"},
                     {"Command4", "EXIT"}};

struct Item {
  const char *window, *name, *caption, *shortcut;
  bool enabled;
};

constexpr Item kItems[] = {
    {"Form1", "Lcf", "Load Compress File", "", false},
    {"Form1", "Lnf", "Load Normal File", "", true},
    {"Form1", "S_tbf", "Save Text Bin File", "", false},
    {"Form1", "S_bf", "Save Bin File", "", false},
    {"Form1", "S_mf", "Save Mi File", "", false},
    {"Form1", "Exit", "E&xit", "Ctrl+X", true},
    {"Form1", "Page_Erase", "Page &Erase", "Ctrl+E", false},
    {"Form1", "Blank_Entire", "Erase all", "Ctrl+B", true},
    {"Form1", "Program", "&Program", "Ctrl+P", true},
    {"Form1", "Page_Read_code", "Page &Read", "Ctrl+R", false},
    {"Form1", "Show_Load_Code", "&Page Load", "Ctrl+S", false},
    {"Form1", "about", "&About", "Ctrl+A", true},
    {"RTD2120Write", "About", "&About", "Ctrl+A", true},
    {"RTD2120Write", "exit", "&Exit", "Ctrl+E", true},
};

}  // namespace

class LayoutTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    ApplyApplicationStyle();
    desk_.emplace();
    desk_->folder.Write("program/Initial/security.cod", "");
    desk_->Start();
    Desk::Press("Main", "Command1");
  }

  void everyWindowHasTheIconInAllSizes() {
    const QIcon icon = ShownWindow("Form1")->windowIcon();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
      QVERIFY2(icon.availableSizes().contains(QSize(size, size)),
               qPrintable(QString::number(size)));
    }
  }

  void windows() {
    Check("Main", kMain, {3360, 4305});
    Check("Form3", kForm3, {5715, 5265});
    QCOMPARE(ShownWindow("Form3")->findChildren<QLabel*>(QStringLiteral("Label8")).size(), 6);
    Check("Form1", kForm1, {8160, 6750});
    Check("Form1", kForm1Heading, {8160, 6750});
    QStringList titles;
    for (const QMenu* menu : ShownWindow("Form1")->findChildren<QMenu*>()) titles << menu->title();
    titles.removeAll(QString());  // the menu bar's own overflow menu
    QCOMPARE(titles, (QStringList{"File", "&Load File", "&Save File", "Action", "&Help"}));
    CheckMenus("Form1");
    ByName<QAction>("Form1", "about")->trigger();
    Check("Form2", kForm2, {4680, 6090});
    QCOMPARE(ByName<QLineEdit>("Form2", "Text3")->maxLength(), 4);
    Desk::Press("Main", "Command3");
    Check("RTD2120Write", kRtdWriter, {8400, 5475});
    CheckMenus("RTD2120Write");
    for (const char* button : {"Com64K", "Com64_96K"}) {
      QVERIFY(Told(ByName<QWidget>("RTD2120Write", button), QAccessible::Description)
                  .startsWith(QStringLiteral("Loads a file")));
    }
  }

 private:
  /// The captions are said, by screen readers too; every control shows all of itself and covers no
  /// other.
  static void Check(const char* name, const Captions& captions, QSize clientTwips) {
    QWidget* window = ShownWindow(name);
    QCOMPARE(QAccessible::queryAccessibleInterface(window)->role(), QAccessible::Window);
    auto* main = qobject_cast<QMainWindow*>(window);
    QWidget* client = main != nullptr ? main->centralWidget() : window;
    QCOMPARE(client->size(), clientTwips / 15);
    QVERIFY(window->screen()->availableGeometry().contains(window->frameGeometry()));
    for (const auto& [control, shown] : captions) {
      const QString caption = QString::fromUtf8(shown);
      auto* widget = ByName<QWidget>(name, control);
      const QVariant title = widget->property("title");
      QCOMPARE((title.isValid() ? title : widget->property("text")).toString(), caption);
      QCOMPARE(Told(widget, QAccessible::Name), caption);
    }
    CheckChildren(client);
    for (QWidget* frame : client->findChildren<QGroupBox*>()) CheckChildren(frame);
  }

  static void CheckChildren(QWidget* parent) {
    const auto children = parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (qsizetype i = 0; i < children.size(); ++i) {
      QWidget* child = children[i];
      const QByteArray name = child->objectName().toLatin1();
      QVERIFY2(parent->rect().contains(child->geometry()), name);
      const bool status = name == "Label2" || name == "Label3";  // empty, wrapped
      QVERIFY2(status || !Told(child, QAccessible::Name).isEmpty(), name);
      const QString text = child->property("text").toString();
      const QFontMetrics font = child->fontMetrics();
      QVERIFY2(font.horizontalAdvance(text) <= child->width(), name);
      QVERIFY2(text.isEmpty() || font.height() <= child->height() + 2, name);
      for (qsizetype j = i + 1; j < children.size(); ++j) {
        QVERIFY2(!child->geometry().intersects(children[j]->geometry()),
                 name + " " + children[j]->objectName().toLatin1());
      }
    }
  }

  static void CheckMenus(const char* window) {
    for (const Item& item : kItems) {
      if (QLatin1String(item.window) != QLatin1String(window)) continue;
      const auto* action = ByName<QAction>(window, item.name);
      QCOMPARE(action->text(), QString(item.caption));
      QCOMPARE(action->shortcut(), QKeySequence(item.shortcut));
      QCOMPARE(action->isEnabled(), item.enabled);
    }
  }

  std::optional<Desk> desk_;
};

QTEST_MAIN(LayoutTest)
#include "layout_test.moc"
