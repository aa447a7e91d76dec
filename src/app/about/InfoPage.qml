import QtQuick
import QtQuick.Controls
import Tallyvane

// One of the app's information pages ("credits", "privacy" or "terms"),
// shown as rich text. A page that is missing shows nothing.
Page {
    id: page

    property string source

    AboutController {
        id: pages
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("About")
        onBackClicked: page.StackView.view.pop()
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth

        TextArea {
            objectName: "pageText"
            readOnly: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.RichText
            text: pages.pageHtml(page.source)
            leftPadding: AppTheme.margin
            rightPadding: AppTheme.margin
            topPadding: AppTheme.margin
            bottomPadding: AppTheme.margin
            background: null
            Accessible.name: page.title
        }
    }
}
