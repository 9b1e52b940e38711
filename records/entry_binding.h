#pragma once

class EntryFields;
class Stages;

// Binds the fields of all panes to the record sets of their stages, and tells the stages what is typed. Once
// the fields are made.
void bindFields(Stages& stages, const EntryFields& fields);
