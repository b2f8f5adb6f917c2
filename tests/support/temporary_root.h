#pragma once

#include "core/folders.h"

#include <string>

#include <QTemporaryDir>

/// A folder of its own for one test, under which all of the program's folders lie; gone at the end.
class CTemporaryRoot {
public:
    CTemporaryRoot() { SetFolderRoot(path()); }
    ~CTemporaryRoot() { SetFolderRoot({}); }
    std::string path() const { return folder.path().toStdString(); }
    std::string file(const std::string& name) const { return path() + "/" + name; }

private:
    QTemporaryDir folder;
};
