// Fit records: the way of a data set into a fit and of its answer into the project. A
// record keeps the request that it answers and the revision of its data; whether it is
// up to date, and what its label says, follow from these two.
#pragma once

#include <string>
#include <vector>

#include "fit/answer.h"
#include "project/records.h"

namespace tavlo {

/// The record of an answer, to be kept in a slot of a fit set.
FitResult record_of(const FitRequest& request, const Fit& fit, std::vector<Note> notes,
                    std::int64_t revision);

/// The life that a record holds.
Life life_of(const FitResult& fit);

/// The record of a life that was given, not fitted.
FitResult given_record(const FitRequest& request, const Life& life, std::int64_t revision);

/// True when the record holds numbers, and they belong to the data as they were last read.
bool is_current(const FitResult& fit, const DataSet& data);

/// True when the person has changed the data or their ranks since: the numbers hold for others.
bool is_out_of_date(const FitResult& fit, const DataSet& data);

/// True when it is out of date and the data that were read last have not refused it.
bool wants_refit(const FitResult& fit, const DataSet& data);

/// Why it is out of date, as a sentence for the person; empty where it is not. A fit that a file
/// brought may be out of date while its data are as they were.
std::string why_out_of_date(const FitResult& fit, const DataSet& data);

/// Whether Benard's and exact ranks of the data differ: without suspensions, and up to the
/// largest count that has exact ones.
bool has_kinds_of_ranks(const DataSet& data);

/// True when a line was drawn through ranks of the other kind than the data have now. A file
/// has one kind for a set: there the fit would come back as one of that kind.
bool has_other_ranks(const FitResult& fit, const DataSet& data);

/// "W4P/MLEc": model and method, and whether suspensions take part in the likelihood.
std::string short_label(const FitRequest& request);
/// The same of a fit; one from a file knows its model and method alone.
std::string label_of(const FitResult& fit);

/// "W4P/MLEc 4 Par": the label that a record keeps.
std::string full_label(const FitRequest& request);

/// The slot that holds the fit of the request, up to slope and ranks; 0 when none does.
int find_slot(const FitSet& fits, const FitRequest& request);

/// Tells that the data have changed: the fits made from them are out of date.
void mark_changed(DataSet& data);

/// The name of a failure mode as the data call it now; its number where it has none.
std::string mode_name(const DataSet& data, int mode);

}  // namespace tavlo
