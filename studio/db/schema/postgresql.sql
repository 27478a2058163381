-- The Orvane Studio database, PostgreSQL form. sqlite.sql holds the same tables for SQLite;
-- keep the two alike. Names are the ones the library's statements use. Flags are 'Y' or 'N'.
-- The stored procedures are PL/pgSQL functions at the end: an Oracle package.procedure is the
-- function procedure in the schema package.

-- Sequences for new keys. The first values leave room for the demo data.
CREATE SEQUENCE sq_eds_document START 101;
CREATE SEQUENCE sq_eds_column START 101;
CREATE SEQUENCE sq_eds_primarykey START 101;
CREATE SEQUENCE sq_qvd_field START 1001;

-- ---------------------------------------------------------------- the dictionary

-- The technologies of the radio network. A field's technology mask is the sum of the bits of
-- its technologies.
CREATE TABLE qvd_technology (
    tech_id   INTEGER     NOT NULL PRIMARY KEY,
    tech_name VARCHAR(20) NOT NULL UNIQUE,
    tech_bit  INTEGER     NOT NULL UNIQUE CHECK (tech_bit > 0)
);

-- Entities: the kinds of network object whose rows the system holds (Cell, Site, BSC, ...),
-- each under the entity above it in the network (parent_entity_id).
-- allow_external is the dictionary owner's rule for external data: 'Y' lets a data source deliver
-- rows for the entity; 'N' keeps them to the system itself, for the entities it computes (the
-- roll-ups Region and Network), so that no file or table can overwrite them.
CREATE TABLE qvn_entity (
    entity_id        INTEGER     NOT NULL PRIMARY KEY,
    entity_name      VARCHAR(40) NOT NULL UNIQUE,
    entity_label     VARCHAR(60) NOT NULL,
    parent_entity_id INTEGER     REFERENCES qvn_entity (entity_id),
    allow_external   CHAR(1)     NOT NULL DEFAULT 'Y' CHECK (allow_external IN ('Y', 'N'))
);

-- Groups of dictionary fields. Fields created for external data sources go into 'EXT'.
CREATE TABLE qvd_field_group (
    field_group_id    INTEGER     NOT NULL PRIMARY KEY,
    field_group_short VARCHAR(10) NOT NULL UNIQUE,
    field_group_name  VARCHAR(40) NOT NULL
);

-- The aggregators a field may name, in the order lists show them.
CREATE TABLE qvd_aggregator (
    aggregator_id   INTEGER     NOT NULL PRIMARY KEY,
    aggregator_name VARCHAR(20) NOT NULL UNIQUE,
    display_order   INTEGER     NOT NULL
);

-- The valid combinations of a time aggregator (over time) and an element aggregator (over
-- network elements); a field stores the id of its pair. Pairs without element aggregator serve
-- dictionaries that offer none (qvd_dict_setting ElementAggregation).
CREATE TABLE qvd_aggregation_pair (
    pair_id               INTEGER NOT NULL PRIMARY KEY,
    time_aggregator_id    INTEGER NOT NULL REFERENCES qvd_aggregator (aggregator_id),
    element_aggregator_id INTEGER REFERENCES qvd_aggregator (aggregator_id),
    UNIQUE (time_aggregator_id, element_aggregator_id)
);

-- Settings of the dictionary, one row each: ElementAggregation is 'Y' when fields take an element
-- aggregator besides the time aggregator.
CREATE TABLE qvd_dict_setting (
    setting_name  VARCHAR(40)  NOT NULL PRIMARY KEY,
    setting_value VARCHAR(100) NOT NULL
);

-- Dictionary fields. field_aggregator: the id of the aggregation pair (0 when none); datatype:
-- I, F, S, E or D; app_group: the application group ('Traffic'); field_kind: how the field gets
-- its values ('S' stored from a data source, as eds_client.createfield writes it); technologies:
-- the technology selection as text, as the field editor shows it (qvd_field_tech holds the rows
-- that count); field_style: bits 1 bold, 2 italic, 4 underline; style_colour: an RGB value.
CREATE TABLE qvd_field_def (
    field_id         INTEGER      NOT NULL PRIMARY KEY,
    field_desc       VARCHAR(80),
    field_aggregator INTEGER      NOT NULL DEFAULT 0,
    datatype         CHAR(1)      NOT NULL,
    field_group_id   INTEGER      NOT NULL REFERENCES qvd_field_group (field_group_id),
    app_group        VARCHAR(20)  NOT NULL DEFAULT 'Traffic',
    field_kind       CHAR(1)      NOT NULL DEFAULT 'S',
    technologies     VARCHAR(100),
    field_style      INTEGER      NOT NULL DEFAULT 0,
    style_colour     INTEGER      NOT NULL DEFAULT 0,
    owner_id         INTEGER      NOT NULL DEFAULT 0,
    saved_at         TIMESTAMP
);

-- The name and report headings of each field, and the entity it belongs to. A name is unique
-- within its entity regardless of case.
CREATE TABLE qvd_dict_name (
    field_id       INTEGER     NOT NULL PRIMARY KEY
                               REFERENCES qvd_field_def (field_id) ON DELETE CASCADE,
    entity_id      INTEGER     NOT NULL REFERENCES qvn_entity (entity_id),
    name           VARCHAR(30) NOT NULL CHECK (trim(name) <> ''),
    report_header  VARCHAR(20),
    report_header2 VARCHAR(20)
);
CREATE UNIQUE INDEX qvd_dict_name_entity_name ON qvd_dict_name (entity_id, upper(name));

-- The fields of each entity, as the field-name check reads them.
CREATE VIEW qvd_dict_field AS
    SELECT field_id, entity_id, name AS field_name FROM qvd_dict_name;

-- The technologies of each field, one row per technology.
CREATE TABLE qvd_field_tech (
    field_id INTEGER NOT NULL REFERENCES qvd_field_def (field_id) ON DELETE CASCADE,
    tech_id  INTEGER NOT NULL REFERENCES qvd_technology (tech_id),
    PRIMARY KEY (field_id, tech_id)
);

-- Extra columns that the dictionary defines for an application group, in display order. A
-- column not in use keeps its values but is not shown.
CREATE TABLE qvd_extra_column (
    extra_column_id INTEGER     NOT NULL PRIMARY KEY,
    app_group       VARCHAR(20) NOT NULL,
    column_name     VARCHAR(30) NOT NULL,
    in_use          CHAR(1)     NOT NULL DEFAULT 'Y' CHECK (in_use IN ('Y', 'N')),
    display_order   INTEGER     NOT NULL,
    UNIQUE (app_group, column_name)
);

-- Each field's values for the extra columns.
CREATE TABLE qvd_field_extra (
    field_id        INTEGER      NOT NULL REFERENCES qvd_field_def (field_id) ON DELETE CASCADE,
    extra_column_id INTEGER      NOT NULL REFERENCES qvd_extra_column (extra_column_id),
    extra_value     VARCHAR(100),
    PRIMARY KEY (field_id, extra_column_id)
);

-- ---------------------------------------------------------------- report templates

-- The report templates of the performance-management client.
CREATE TABLE pm_template (
    template_id   INTEGER     NOT NULL PRIMARY KEY,
    template_name VARCHAR(60) NOT NULL UNIQUE
);

-- The fields each report template uses. A column whose field is used here may not be deleted.
CREATE TABLE pm_templatefield (
    templateid INTEGER NOT NULL REFERENCES pm_template (template_id) ON DELETE CASCADE,
    field_id   INTEGER NOT NULL REFERENCES qvd_field_def (field_id),
    PRIMARY KEY (templateid, field_id)
);

-- ---------------------------------------------------------------- frequencies

-- The frequencies of time-series data, with their length in minutes.
CREATE TABLE qv_frequency (
    frequency_id INTEGER     NOT NULL PRIMARY KEY,
    description  VARCHAR(40) NOT NULL UNIQUE,
    minutes      INTEGER     NOT NULL
);

-- Which frequencies exist for an orientation: 'T' along time (what data sources offer), 'E'
-- across elements.
CREATE TABLE pm_groupby (
    frequency_id INTEGER NOT NULL REFERENCES qv_frequency (frequency_id),
    orientation  CHAR(1) NOT NULL,
    PRIMARY KEY (frequency_id, orientation)
);

-- ---------------------------------------------------------------- external data sources

-- The host's document table: one row per EDS document, written by the host. Its id is the eds_id
-- of the tables below. eds_type: 'A' ASCII file, 'O' ODBC table; doc_type: the document type's
-- name, "ASCII Data Source" or "ODBC Data Source"; frequency_id: for a time series;
-- change_stamp counts the saves: a save checks it is still what its window read and adds one, so
-- that of two sessions saving one document the later one learns of the earlier.
CREATE TABLE eds_document (
    id             INTEGER      NOT NULL PRIMARY KEY,
    name           VARCHAR(60)  NOT NULL UNIQUE,
    description    VARCHAR(255),
    eds_type       VARCHAR(10)  NOT NULL,
    entity_id      INTEGER      NOT NULL REFERENCES qvn_entity (entity_id),
    is_time_series CHAR(1)      NOT NULL DEFAULT 'N' CHECK (is_time_series IN ('Y', 'N')),
    frequency_id   INTEGER      REFERENCES qv_frequency (frequency_id),
    doc_type       VARCHAR(40)  NOT NULL,
    change_stamp   INTEGER      NOT NULL DEFAULT 0
);

-- The settings of an ASCII source: the file and the character between its values.
CREATE TABLE eds_ascii_file (
    eds_id    INTEGER      NOT NULL PRIMARY KEY REFERENCES eds_document (id) ON DELETE CASCADE,
    filename  VARCHAR(255) NOT NULL,
    separator VARCHAR(5)   NOT NULL
);

-- The settings of an ODBC source; the password is held as the user typed it.
CREATE TABLE eds_odbc_file (
    eds_id      INTEGER      NOT NULL PRIMARY KEY REFERENCES eds_document (id) ON DELETE CASCADE,
    db_server   VARCHAR(100) NOT NULL,
    db_database VARCHAR(100),
    table_name  VARCHAR(100) NOT NULL,
    db_userid   VARCHAR(60),
    db_password VARCHAR(60)
);

-- The columns of a source: name, type code (I, F, S, E, D), position in the incoming record,
-- whether it is the time stamp, and its place in the editor (editor_position, which older
-- databases lack). No two columns of a source share a position: the save moves columns past
-- each other through temporary negative positions.
CREATE TABLE eds_column (
    col_id          INTEGER     NOT NULL PRIMARY KEY,
    eds_id          INTEGER     NOT NULL REFERENCES eds_document (id) ON DELETE CASCADE,
    col_name        VARCHAR(40) NOT NULL,
    col_type        CHAR(1)     NOT NULL,
    col_position    INTEGER     NOT NULL,
    is_timestamp    CHAR(1)     NOT NULL DEFAULT 'N' CHECK (is_timestamp IN ('Y', 'N')),
    editor_position INTEGER,
    UNIQUE (eds_id, col_position)
);

-- The key columns of a source: the key field each fills and its ordinal among the source's keys.
-- The library inserts rows without column names, so the order of the columns matters.
CREATE TABLE eds_primarykey (
    pk_id    INTEGER NOT NULL PRIMARY KEY,
    eds_id   INTEGER NOT NULL REFERENCES eds_document (id) ON DELETE CASCADE,
    col_id   INTEGER NOT NULL REFERENCES eds_column (col_id) ON DELETE CASCADE,
    field_id INTEGER NOT NULL REFERENCES qvd_field_def (field_id),
    ordinal  INTEGER NOT NULL
);
CREATE INDEX eds_primarykey_col ON eds_primarykey (col_id);

-- The dictionary field each column of a source fills; one at most.
CREATE TABLE qvd_eds_def (
    eds_id   INTEGER NOT NULL REFERENCES eds_document (id) ON DELETE CASCADE,
    col_id   INTEGER NOT NULL REFERENCES eds_column (col_id) ON DELETE CASCADE,
    field_id INTEGER NOT NULL REFERENCES qvd_field_def (field_id),
    PRIMARY KEY (eds_id, col_id)
);
CREATE INDEX qvd_eds_def_col ON qvd_eds_def (col_id);
CREATE INDEX qvd_eds_def_field ON qvd_eds_def (field_id);

-- ---------------------------------------------------------------- stored procedures

CREATE SCHEMA qv_dictionary;
CREATE SCHEMA eds_client;

-- One qvd_field_tech row per technology whose bit is in the mask; rows already there stay.
-- A bit that names no technology is refused.
CREATE FUNCTION qv_dictionary.add_tech_from_mask(p_field_id integer, p_mask integer)
RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    v_known integer;
BEGIN
    IF p_mask IS NULL OR p_mask = 0 THEN
        RETURN;
    END IF;
    IF p_mask < 0 THEN
        RAISE EXCEPTION 'qv_dictionary.add_tech_from_mask: technology mask % is negative', p_mask;
    END IF;
    IF NOT EXISTS (SELECT 1 FROM qvd_field_def WHERE field_id = p_field_id) THEN
        RAISE EXCEPTION 'qv_dictionary.add_tech_from_mask: field % does not exist', p_field_id;
    END IF;
    SELECT COALESCE(bit_or(tech_bit), 0) INTO v_known FROM qvd_technology;
    IF (p_mask & ~v_known) <> 0 THEN
        RAISE EXCEPTION 'qv_dictionary.add_tech_from_mask: technology mask % holds bits that name no technology (%)',
            p_mask, p_mask & ~v_known;
    END IF;
    INSERT INTO qvd_field_tech (field_id, tech_id)
        SELECT p_field_id, t.tech_id FROM qvd_technology t
         WHERE (t.tech_bit & p_mask) <> 0
           AND NOT EXISTS (SELECT 1 FROM qvd_field_tech x
                            WHERE x.field_id = p_field_id AND x.tech_id = t.tech_id);
END
$$;

-- Creates a field of the entity in the EXT group for a column of a data source: its definition,
-- names and technologies, and the mapping of the column to it (replacing an earlier mapping of
-- that column). Hands back the new field id in p_field_id. The entity must exist and allow
-- external data; a group id other than EXT's is refused.
CREATE FUNCTION eds_client.createfield(
    INOUT p_field_id integer, p_eds_id integer, p_col_id integer, p_entity_id integer,
    p_name text, p_description text, p_heading1 text, p_heading2 text, p_kind text,
    p_datatype text, p_technologies text, p_tech_mask integer, p_aggregation_pair_id integer,
    p_field_group_id integer, p_style integer)
LANGUAGE plpgsql AS $$
DECLARE
    v_allowed char(1);
    v_group integer;
BEGIN
    SELECT allow_external INTO v_allowed FROM qvn_entity WHERE entity_id = p_entity_id;
    IF NOT FOUND THEN
        RAISE EXCEPTION 'eds_client.createfield: entity % does not exist', p_entity_id;
    END IF;
    IF v_allowed <> 'Y' THEN
        RAISE EXCEPTION 'eds_client.createfield: entity % may not be used for external data', p_entity_id;
    END IF;
    SELECT field_group_id INTO v_group FROM qvd_field_group WHERE field_group_short = 'EXT';
    IF NOT FOUND THEN
        RAISE EXCEPTION 'eds_client.createfield: the field group EXT does not exist';
    END IF;
    IF COALESCE(p_field_group_id, 0) <> 0 AND p_field_group_id <> v_group THEN
        RAISE EXCEPTION 'eds_client.createfield: field group % is not the external-data group EXT', p_field_group_id;
    END IF;
    p_field_id := nextval('sq_qvd_field');
    INSERT INTO qvd_field_def (field_id, field_desc, field_aggregator, datatype, field_group_id,
                               app_group, field_kind, technologies, field_style)
        VALUES (p_field_id, p_description, COALESCE(p_aggregation_pair_id, 0),
                COALESCE(p_datatype, ''), v_group, 'Traffic', p_kind, p_technologies,
                COALESCE(p_style, 0));
    INSERT INTO qvd_dict_name (field_id, entity_id, name, report_header, report_header2)
        VALUES (p_field_id, p_entity_id, COALESCE(p_name, ''), p_heading1, p_heading2);
    PERFORM qv_dictionary.add_tech_from_mask(p_field_id, p_tech_mask);
    DELETE FROM qvd_eds_def WHERE eds_id = p_eds_id AND col_id = p_col_id;
    INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES (p_eds_id, p_col_id, p_field_id);
END
$$;

-- Deletes a column of a data source with its key and mapping rows; then the EXT fields the column
-- was mapped to, unless another column, a key or a report template still uses them (their names,
-- technologies and extra values go with them). An unknown column id changes nothing.
CREATE FUNCTION eds_client.deletecolumn(p_col_id integer)
RETURNS void LANGUAGE plpgsql AS $$
DECLARE
    v_fields integer[];
BEGIN
    SELECT array_agg(field_id) INTO v_fields FROM qvd_eds_def WHERE col_id = p_col_id;
    DELETE FROM eds_primarykey WHERE col_id = p_col_id;
    DELETE FROM qvd_eds_def WHERE col_id = p_col_id;
    DELETE FROM eds_column WHERE col_id = p_col_id;
    DELETE FROM qvd_field_def d
     WHERE d.field_id = ANY (COALESCE(v_fields, '{}'))
       AND d.field_group_id = (SELECT field_group_id FROM qvd_field_group
                                WHERE field_group_short = 'EXT')
       AND NOT EXISTS (SELECT 1 FROM qvd_eds_def m WHERE m.field_id = d.field_id)
       AND NOT EXISTS (SELECT 1 FROM eds_primarykey k WHERE k.field_id = d.field_id)
       AND NOT EXISTS (SELECT 1 FROM pm_templatefield t WHERE t.field_id = d.field_id);
END
$$;
