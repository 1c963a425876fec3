#include "widgets/problem_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

class PortProblemTest final : public QObject {
  Q_OBJECT

 private slots:
  void AppearsAtTheNextTurnAndBlocksNothing() {
    PostProblem("no port at <0x378>");
    QVERIFY(QApplication::topLevelWidgets().isEmpty());  // the line operation runs on

    QApplication::processEvents();
    QCOMPARE(QApplication::topLevelWidgets().size(), 1);
    const QPointer box = qobject_cast<QMessageBox*>(QApplication::topLevelWidgets().constFirst());
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QVERIFY(!box->isModal());
    QCOMPARE(box->text(), QStringLiteral("no port at <0x378>"));
    QCOMPARE(box->textFormat(), Qt::PlainText);

    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(box.isNull());
  }
};

QTEST_MAIN(PortProblemTest)
#include "problem_box_test.moc"
