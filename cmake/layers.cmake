# The folders of src/ in their order, lowest first; folders of one row know nothing of each
# other. A folder may include what stands in the rows above its own, never below. The build
# links by this list, and the test of the includes (tests/layout/layers) reads it, too.
set(CUSTOMSCONV_LAYER_ROWS
    "base"
    "text xml/tree"
    "platform"
    "config"
    "services"
    "dbf streams"
    "catalogue"
    "document"
    "tables"
    "xml/read xml/write"
    "mapping validation"
    "entry"
    "cli"
)
