import QtQuick
import QtQuick.Dialogs
import com.zentara.zt

// Asks for a file in the program's own window, with the same look on every desktop.
CDlgQMLFileDialog {
    id: dlg

    onReopen: files.open()
    Component.onCompleted: {
        if (save)
            files.currentFile = proposedFile
        files.open()
    }

    FileDialog {
        id: files
        title: dlg.title
        fileMode: dlg.save ? FileDialog.SaveFile : FileDialog.OpenFile
        options: FileDialog.DontUseNativeDialog
        nameFilters: dlg.nameFilters
        defaultSuffix: dlg.defaultSuffix
        currentFolder: dlg.startFolder
        onAccepted: dlg.fileChosen(selectedFile)
        onRejected: dlg.closeDialog(1)
    }
}
