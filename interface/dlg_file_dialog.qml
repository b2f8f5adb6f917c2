import QtQuick
import QtQuick.Dialogs
import com.zentara.zt

// Asks for a file in the program's own window, with the same look on every desktop.
CDlgQMLFileDialog {
    id: dlg

    function ask() {
        if (save)
            files.currentFile = proposedFile
        files.open()
    }

    onReopen: ask()
    // Later: this element takes the keyboard when it is shown, and the file dialog must have it.
    Component.onCompleted: Qt.callLater(ask)

    FileDialog {
        id: files
        title: dlg.title
        acceptLabel: dlg.save ? "Save" : "Open"
        fileMode: dlg.save ? FileDialog.SaveFile : FileDialog.OpenFile
        options: FileDialog.DontUseNativeDialog
        nameFilters: dlg.nameFilters
        defaultSuffix: dlg.defaultSuffix
        currentFolder: dlg.startFolder
        onAccepted: dlg.fileChosen(selectedFile)
        onRejected: dlg.closeDialog(1)
    }
}
