import QtQuick
import QtQuick.Controls
import Tallyvane

// One help page, shown as rich text.
Page {
    id: page

    // This page takes the whole window: the tab bar hides while it is shown.
    readonly property bool hidesTabs: true

    property string source

    CalculatorHelpModel {
        id: pages
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("Back")
        onBackClicked: page.StackView.view.pop()
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth

        TextArea {
            objectName: "helpText"
            readOnly: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.RichText
            text: pages.loadHtmlFile(page.source)
            leftPadding: AppTheme.margin
            rightPadding: AppTheme.margin
            topPadding: AppTheme.margin
            bottomPadding: AppTheme.margin
            background: null
            Accessible.name: page.title
        }
    }
}
