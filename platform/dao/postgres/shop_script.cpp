#include "platform/dao/postgres/shop_script.h"

#include "platform/dao/postgres/server_functions.h"
#include "platform/text/order.h"

namespace dao::postgres {
namespace {

constexpr const char* kTables = R"(
CREATE SCHEMA shop;
CREATE TABLE dao.shop (
    one boolean PRIMARY KEY DEFAULT true CHECK (one),
    identity uuid NOT NULL DEFAULT gen_random_uuid(),
    whole boolean NOT NULL,
    order_version integer NOT NULL,
    form integer NOT NULL DEFAULT 0,
    schema_version bigint NOT NULL DEFAULT 1
);
CREATE TABLE dao.queries (key bytea PRIMARY KEY, name text NOT NULL, version bigint NOT NULL, sql text NOT NULL);
CREATE SEQUENCE dao.query_texts;
-- The version goes up with the rows of the shop, at the moment "changed"; the commits count stored queries too.
CREATE TABLE dao.writers (
    number integer PRIMARY KEY,
    version bigint NOT NULL,
    changed timestamptz NOT NULL,
    commits bigint NOT NULL,
    mark bigint NOT NULL,
    written timestamptz NOT NULL
);

-- A number that is given is never given again, whatever becomes of the row it is for.
CREATE FUNCTION dao.next_number(counter text, above bigint) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE
    number bigint := nextval(counter);
BEGIN
    WHILE number <= above LOOP
        PERFORM setval(counter, above);
        number := nextval(counter);
    END LOOP;
    RETURN number;
END
$$;
)";

}  // namespace

std::string shopScript() {
    return serverFunctions() + kTables + "INSERT INTO dao.shop (whole, order_version) VALUES (false, " +
           std::to_string(alphabet::kOrderVersion) + ");";
}

std::string finishShop() {
    return "UPDATE dao.shop SET whole = true;";
}

}  // namespace dao::postgres
