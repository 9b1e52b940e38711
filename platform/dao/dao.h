#pragma once

// Everything of the engine that the windows speak to.
#include "platform/dao/database.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/error.h"
#include "platform/dao/held_number.h"
#include "platform/dao/recordset.h"
#include "platform/dao/repair_report.h"
#include "platform/dao/sole_use.h"
#include "platform/dao/value.h"
