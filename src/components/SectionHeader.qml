import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tallyvane

// A small heading between groups of a form.
Label {
    Layout.fillWidth: true
    Layout.leftMargin: AppTheme.margin
    Layout.topMargin: 8
    font.pixelSize: 13
    font.bold: true
    font.capitalization: Font.AllUppercase
    color: AppTheme.secondaryText
}
