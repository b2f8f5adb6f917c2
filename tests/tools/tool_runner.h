#pragma once

#include <string>
#include <vector>

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QStringList>

/// What a run of zt-chart left.
struct CToolRun {
    int code = -1; ///< -1: it did not end by itself
    QByteArray output;
    QByteArray errors;

    QJsonObject Json() const;
    bool SaysOnError(const char* text) const { return errors.contains(text); }
};

/// Runs the zt-chart of this build; at most 60 seconds.
CToolRun RunTool(const QStringList& arguments);

/// A picture with flat parts, edges and noise in `colours` colours.
QImage TestPicture(int width, int height, int colours);
/// Writes it as a PNG, makes FOLDER/NAME.rlt of it with `more` arguments (place and texts) and returns that path.
QString MakeTestChart(const std::string& folder, const char* name, const QImage& picture, const QStringList& more);
