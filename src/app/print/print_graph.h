// A graph onto a printer or into a PDF file, and the paper that the user prints on. Knows printers and settings; shows
// nothing.
#pragma once

#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <filesystem>
#include <span>

#include "desk/settings/setting.h"

class QPrinter;

namespace tarnwick {

class Settings;
class TxyGraph;

/// The part of the printer's page within its margins, in the units of a painter on it.
QRectF SheetOf(const QPrinter& printer);

/// Gives the printer another paper. What it can not print on (margins that are too narrow) it leaves as it is.
void SetPaper(QPrinter& printer, const QPageLayout& page);

/// Prints one page on the printer of that name. Throws Error when it cannot be reached or does not take the page.
void PrintOn(QPrinter& printer, const QString& name, const TxyGraph& graph);

/// Writes the page as a PDF file, whole or not at all. Throws FileError.
void PrintIntoFile(const std::filesystem::path& path, const QPageLayout& page,
                   const TxyGraph& graph);

/// Those that the paper is kept in.
std::span<const SettingRow> PaperSettings();

/// Gives the printer the paper that was used last; nothing happens when there was none.
void RestorePaper(const Settings& settings, QPrinter& printer);
void StorePaper(const QPrinter& printer, Settings& settings);

}  // namespace tarnwick
