#pragma once

#include <QStringList>

/// The subcommands. Each takes its arguments, writes its results to standard output and raises UsageError or
/// an exception with the reason for a failure.
namespace pelorin::cli {

void RunPasses(const QStringList& arguments);
void RunTrack(const QStringList& arguments);
void RunScan(const QStringList& arguments);
void RunLine(const QStringList& arguments);
void RunScanners(const QStringList& arguments);
void RunOverlay(const QStringList& arguments);
void RunAlignments(const QStringList& arguments);
void RunAlign(const QStringList& arguments);
void RunIdentify(const QStringList& arguments);
void RunPicture(const QStringList& arguments);
void RunElements(const QStringList& arguments);
void RunMaster(const QStringList& arguments);
void RunUpdate(const QStringList& arguments);

}  // namespace pelorin::cli
