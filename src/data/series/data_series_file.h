// A DataSet's section: its settings by one field table, then its point block. Knows keys and their order; knows nothing of
// files, headers or what a graph adds.
#pragma once

#include <functional>

#include "data/series/data_series.h"
#include "stream/field_table.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

namespace tarnwick {

enum class WithPoints { No, Yes };

/// Keys 1 to 10, 12 to 24, 42, 44, 46, 47, 48, in writing order. Setting goes through the DataSet's setters. The model's
/// keys (39, 43, 45; curve_fit_file.h) stand among them in the order of their numbers.
FieldTable<TDataSeries> DataSeriesFields();

/// The keys, the end mark and the point block (of count 0 without points). `after_block`, when given, is called after every
/// few hundred points: whoever owns the writer's bytes may take them away.
void WriteDataSeries(SectionWriter& writer, const TDataSeries& series, WithPoints with_points,
                     const std::function<void()>& after_block = {});

/// Reads what WriteDataSeries wrote into a new DataSet, in file order through its setters; unknown keys are passed over.
/// Throws StreamError on a bad stream; the DataSet then holds what was read before.
void ReadDataSeries(SectionReader& reader, TDataSeries& series);

}  // namespace tarnwick
