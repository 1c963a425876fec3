// Every window: what the controls are called, that each one shows all of itself, and the menus.
#include "ui/window_test.h"

namespace {

// The window's title, then Control=caption, joined by "|".
constexpr const char* kMain =
    "Main|Command1=VSK830V|Command2=VSK630V|Command3=RTD2120|Command4=EXIT";
constexpr const char* kForm1 =
    "quillon VSK830 And VSK630|Label1=Halvern Technology Inc|Label6=VSK830 AND VSK630 ISP TOOL "
    "V3.10|Command1=Load File|"
    "Frame3=isp operate|Option6=Page Erase|Option7=Erase All|Option8=Program|Option9=Page Read|"
    "Option10=Page Load|Frame1=Select|Option1=VSK830|Option2=VSK630|Label7=MCU File|"
    "Label8=MaxAddress|checksum=CheckSum|Label9=S/W CRC|Label10=H/W CRC|Frame2=isp mode|"
    "Option4=go to isp mode|Option5=quit isp mode|Command4=Run|Label4=Isp Mode Status|"
    "Label5=Isp Operate Status";
constexpr const char* kForm2 =
    "Setting|Label1=Halvern VSK Isp Writer Program|Label2=Version V100|"
    "Label3=Halvern Technolog Information|Enter=Enter|Command1=Back|Speed=Speed Adjust|"
    "PortAddress=PortAddress:";
constexpr const char* kForm3 =
    "Form3|Label1=Security Check|Label2=Slave Address:|Label3=Nember Of Security Codes：|"
    "Label4=First Security Code：|Label5=Second Security Code：|Label6=Third Security Code：|"
    "Label7=Fourth Security Code：|Command1=Check|Command2=Exit";
constexpr const char* kRtd2120Write =
    "RTD2120Write|Label1=File Name|Label2=Max Address|Label5=CheckSum|Label3=Load File|Com64K=64K|"
    "Com64_96K=64~96K|MainBank=Main|SecondBank=Second|BothBank=Both|AutoOp=Auto|EraseOp=Erase|"
    "Run=Run";

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
    ApplyApplicationStyle();
    desk_.emplace();
    desk_->folder.Write("program/Initial/security.cod", "");
    Start();
    Check(kLauncher, kMain, {3360, 4305});
    Check(kSecurity, kForm3, {5715, 5265});
    QCOMPARE(kSecurity.Shown()->findChildren<QLabel*>(QStringLiteral("Label8")).size(), 6);
    kLauncher.Press("Command1");
    Check(kVskWriter, kForm1, {8160, 6750}, kForm1Menus);
    kVskWriter.Choose("about");
    Check(kSettings, kForm2, {4680, 6090});
    QCOMPARE(kSettings.Find<QLineEdit>("Text3")->maxLength(), 4);
    kLauncher.Press("Command3");
    Check(kRtdWriter, kRtd2120Write, {8400, 5475}, kRtd2120WriteMenus);
    for (const char* button : {"Com64K", "Com64_96K"}) {
      QVERIFY(Told(kRtdWriter.Find(button), QAccessible::Description)
                  .startsWith(QStringLiteral("Loads a file")));
    }
  }

 private:
  /// The captions are said, by screen readers too; every control shows all of itself and covers no
  /// other.
  static void Check(const NamedWindow& named, const char* captions, QSize clientTwips,
                    const char* menus = "") {
    QWidget* window = named.Shown();
    const auto icons = window->windowIcon().availableSizes();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
      QVERIFY2(icons.contains(QSize(size, size)), QByteArray::number(size));
    }
    QCOMPARE(QAccessible::queryAccessibleInterface(window)->role(), QAccessible::Window);
    auto* main = qobject_cast<QMainWindow*>(window);
    QWidget* client = main != nullptr ? main->centralWidget() : window;
    QCOMPARE(client->size(), clientTwips / 15);
    QVERIFY(window->screen()->availableGeometry().contains(window->frameGeometry()));
    QStringList texts = QString::fromUtf8(captions).split('|');
    QCOMPARE(window->windowTitle(), texts.takeFirst());
    for (const QString& pair : texts) {
      auto* widget = named.Find(pair.section('=', 0, 0).toLatin1());
      const QString caption = pair.section('=', 1);
      const QVariant title = widget->property("title");
      QCOMPARE((title.isValid() ? title : widget->property("text")).toString(), caption);
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
};

QTEST_MAIN(LayoutTest)
#include "layout_test.moc"
