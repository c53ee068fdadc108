// A DataSet's section: its settings by one field table, then its point block. Knows keys and their order; knows nothing of
// files, headers or what a graph adds.
#pragma once

#include <functional>

#include "data/series/data_series.h"
#include "stream/field_table.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

namespace tarnwick {

/// What is written of the points. The order in which they came is written where there is need of it: for gaps, or because
/// whoever draws the DataSet asks for it.
enum class WithPoints { No, Yes, YesAndOrder };

/// Keys 1 to 10, 12 to 24, 42, 44, 46 to 50, 53 to 64, 67, 68, 77, in writing order. Setting goes through the DataSet's setters.
/// The model's
/// keys (39, 43, 45; curve_fit_file.h) stand among them in the order of their numbers; key 51 (the
/// order in which the points came), 52 (where pieces begin), 65 and 66 (their errors) are not the settings' but the points'.
FieldTable<TDataSeries> DataSeriesFields();

/// The keys, the end mark and the point block (of count 0 without points). `after_block`, when given, is called after every
/// few hundred points: whoever owns the writer's bytes may take them away.
void WriteDataSeries(SectionWriter& writer, const TDataSeries& series, WithPoints with_points,
                     const std::function<void()>& after_block = {});

/// Reads what WriteDataSeries wrote into a new DataSet, in file order through its setters; unknown keys are passed over.
/// Throws StreamError on a bad stream; the DataSet then holds what was read before.
void ReadDataSeries(SectionReader& reader, TDataSeries& series);

}  // namespace tarnwick
