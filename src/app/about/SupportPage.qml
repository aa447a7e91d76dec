import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// The support form. Send posts it; the server's reply appears below the
// fields. When no answer comes, a message says so and the form can be sent
// again. Return in a field just takes the keyboard away.
Page {
    id: page

    readonly property alias controller: controller

    title: qsTr("Support")
    Accessible.name: title

    SupportController {
        id: controller

        onEditingEnded: {
            nameField.focus = false;
            emailField.focus = false;
            commentField.focus = false;
        }
    }

    header: TitleBar {
        title: page.title
        backText: qsTr("About")
        onBackClicked: page.StackView.view.pop()

        TitleBarButton {
            objectName: "sendButton"
            text: qsTr("Send")
            enabled: controller.sendEnabled
            Accessible.name: qsTr("Send support request")
            onClicked: controller.sendClicked()
        }
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth

        ColumnLayout {
            width: parent.width
            spacing: 12

            Label {
                Layout.fillWidth: true
                Layout.topMargin: AppTheme.margin
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                wrapMode: Text.Wrap
                color: AppTheme.secondaryText
                text: qsTr("Questions, problems or ideas? Tell us, and we will answer by e-mail.")
            }

            TextField {
                id: nameField

                objectName: "nameField"
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                placeholderText: qsTr("Name")
                text: controller.name
                selectByMouse: true
                font.pixelSize: 17
                Accessible.name: qsTr("Name")
                onTextEdited: controller.name = text
                onAccepted: focus = false
            }
            TextField {
                id: emailField

                objectName: "emailField"
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                placeholderText: qsTr("E-mail")
                text: controller.email
                inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase
                selectByMouse: true
                font.pixelSize: 17
                Accessible.name: qsTr("E-mail")
                onTextEdited: controller.email = text
                onAccepted: focus = false
            }
            TextField {
                id: commentField

                objectName: "commentField"
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                placeholderText: qsTr("Comment")
                text: controller.comment
                selectByMouse: true
                font.pixelSize: 17
                Accessible.name: qsTr("Comment")
                onTextEdited: controller.comment = text
                onAccepted: focus = false
            }

            BusyIndicator {
                Layout.alignment: Qt.AlignHCenter
                visible: controller.sending
                running: controller.sending
            }

            Label {
                objectName: "supportErrorLabel"
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                visible: controller.errorMessage.length > 0
                text: controller.errorMessage
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
                color: AppTheme.danger
                font.pixelSize: 16
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }

            Button {
                objectName: "sendAgainButton"
                Layout.alignment: Qt.AlignHCenter
                visible: controller.errorMessage.length > 0
                enabled: controller.sendEnabled
                text: qsTr("Send Again")
                onClicked: controller.sendClicked()
            }

            Label {
                objectName: "serverResponseLabel"
                Layout.fillWidth: true
                Layout.leftMargin: AppTheme.margin
                Layout.rightMargin: AppTheme.margin
                Layout.bottomMargin: AppTheme.margin
                visible: controller.responseVisible
                text: controller.serverResponse
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
                font.pixelSize: 16
            }
        }
    }
}
