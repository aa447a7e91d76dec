import QtQuick
import QtTest
import Tallyvane
import TallyvaneTest

// The window's start on a damaged list of saved reports: the window is up
// before the check (which runs beside it) ends; then an alert says where the
// damaged file was kept (the list held none), and the list starts empty.
// Its own file, so that its second window comes after the others' tests.
TestCase {
    name: "DamagedStore"
    when: windowShown

    function test_aDamagedListIsToldOnceTheWindowIsUp() {
        TestFiles.reset();
        TestFiles.damageStore();
        const window = Qt.createComponent("qrc:/Tallyvane/app/Main.qml").createObject(null);
        verify(window);
        tryCompare(window, "visible", true);
        tryCompare(Presenter, "pendingCount", 1, 5000);
        const request = Presenter.pendingRequest();
        compare(request.title, "Saved Reports");
        verify(request.message.startsWith("The saved reports could not be read; a copy was kept as "), request.message);
        verify(request.message.endsWith("It held no saved reports."), request.message);
        compare(window.reports.count, 0);
        Presenter.answer(request.id, "OK");
        tryCompare(Presenter, "pendingCount", 0);
        window.destroy();
        wait(0);
    }
}
