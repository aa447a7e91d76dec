import QtQuick
import QtQuick.Controls
import QtTest
import Tallyvane
import TallyvaneTest

Item {
    id: root

    width: 412
    height: 892

    Component {
        id: listPage

        ReportListPage {
            width: root.width
            height: root.height
            reports: ReportTableModel {}
        }
    }

    Component {
        id: detailPage

        ReportDetailPage {
            width: root.width
            height: root.height
        }
    }

    TestCase {
        name: "ReportScreens"
        when: windowShown

        function init() {
            TestFiles.reset();
        }

        function rowTitles(list) {
            const titles = [];
            for (let i = 0; i < list.count; ++i) {
                list.positionViewAtIndex(i, ListView.Contain);
                titles.push(list.itemAtIndex(i).title);
            }
            return titles;
        }

        function test_listShowsSavedReportsNewestFirst() {
            TestFiles.saveReport("Plan A");
            TestFiles.saveReport("Plan B");
            const page = createTemporaryObject(listPage, root);
            const list = findChild(page, "reportList");
            compare(list.count, 2);
            compare(rowTitles(list), ["Plan B", "Plan A"]);
            compare(list.itemAtIndex(0).functionTitle, "Roi");
            verify(Qt.colorEqual(list.itemAtIndex(0).colorTag, "#1FDA9A"));

            // A save made while the screen is away shows up when it reappears.
            TestFiles.saveReport("Plan C");
            page.reports.loadReportArray();
            compare(rowTitles(list), ["Plan C", "Plan B", "Plan A"]);
        }

        function test_editModeDeletesARowAndKeepsItsFile() {
            TestFiles.saveReport("one");
            const keptFile = TestFiles.saveReport("two");
            TestFiles.saveReport("three");
            const page = createTemporaryObject(listPage, root);
            const list = findChild(page, "reportList");
            const edit = findChild(page, "editButton");
            compare(edit.text, "Edit");
            mouseClick(edit);
            compare(edit.text, "Done");
            const row = list.itemAtIndex(1);
            const deleteButton = findChild(row, "deleteButton");
            verify(deleteButton.visible);
            // The minus only reveals the Delete button.
            mouseClick(deleteButton);
            compare(list.count, 3);
            verify(row.confirming);
            mouseClick(findChild(row, "confirmDeleteButton"));
            compare(rowTitles(list), ["three", "one"]);
            compare(TestFiles.storedCount(), 2);
            verify(TestFiles.exists(keptFile));

            // Undo puts it back in its place.
            const undoBar = findChild(page, "undoBar");
            verify(undoBar.visible);
            mouseClick(findChild(undoBar, "undoButton"));
            compare(rowTitles(list), ["three", "two", "one"]);
            compare(TestFiles.storedCount(), 3);
            verify(!undoBar.visible);
        }

        function test_detailShowsTheTextAndMailsItAgain() {
            const path = TestFiles.saveReport("Mail me");
            const page = createTemporaryObject(detailPage, root, {
                "reportFilePath": path
            });
            const text = findChild(page, "reportText");
            verify(text.text.startsWith("Financial Report - Return on Investment\nDate: 05-03-2024 "));
            verify(text.text.endsWith("Investment: 1000\nRoi: 12%\n"));

            mouseClick(findChild(page, "exportButton"));
            const request = Presenter.pendingRequest();
            compare(request.title, "Export");
            compare(request.kind, "sheet");
            compare(request.actions.map(a => a.title), ["Cancel", "Send Email", "Save as PDF"]);
            Presenter.answer(request.id, "Send Email");
            compare(TestFiles.draftCount(), 1);
            const draft = TestFiles.lastDraft();
            verify(draft.indexOf("Subject: Quorvex - Financial Report") >= 0);
            const name = path.substring(path.lastIndexOf("/") + 1);
            verify(draft.indexOf("filename=\"" + name + ".txt\"") >= 0, "doubled .txt");
            verify(TestFiles.exists(path));
        }
    }
}
