-- The demo dictionary every new Orvane Studio database starts with: a small telecom network
-- model, enough to try every command. Plain SQL that SQLite and PostgreSQL both run. Keys are
-- written out; the sequences start above them.

INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) VALUES (1, 'GSM', 1);
INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) VALUES (2, 'UMTS', 2);
INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) VALUES (3, 'LTE', 4);
INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) VALUES (4, 'NR', 8);

-- Region and Network are roll-ups the system computes: no external data for them.
INSERT INTO qvn_entity (entity_id, entity_name, entity_label, parent_entity_id, allow_external)
VALUES (1, 'Network', 'Network', NULL, 'N'),
       (2, 'Region', 'Region', 1, 'N'),
       (3, 'MSC', 'Mobile Switching Centre', 2, 'Y'),
       (4, 'BSC', 'Base Station Controller', 3, 'Y'),
       (5, 'RNC', 'Radio Network Controller', 3, 'Y'),
       (6, 'Site', 'Site', 2, 'Y'),
       (7, 'Cell', 'Cell', 6, 'Y'),
       (8, 'Trunk Group', 'Trunk Group', 3, 'Y'),
       (9, 'eNodeB', 'LTE Base Station', 6, 'Y'),
       (10, 'gNodeB', 'NR Base Station', 6, 'Y');

INSERT INTO qvd_field_group (field_group_id, field_group_short, field_group_name)
VALUES (1, 'SYS', 'System Counters'),
       (2, 'KPI', 'Key Performance Indicators'),
       (3, 'EXT', 'External Data');

INSERT INTO qvd_aggregator (aggregator_id, aggregator_name, display_order)
VALUES (1, 'Sum', 1), (2, 'Average', 2), (3, 'Minimum', 3), (4, 'Maximum', 4), (5, 'Last', 5);

-- Any aggregator with itself; sums and averages with any element aggregator but Last; minimum
-- and maximum over time with their own kind or the average across elements; Last over time
-- (a gauge) with anything. Pairs 21 to 25 have no element aggregator.
INSERT INTO qvd_aggregation_pair (pair_id, time_aggregator_id, element_aggregator_id)
VALUES (1, 1, 1), (2, 1, 2), (3, 1, 3), (4, 1, 4),
       (5, 2, 2), (6, 2, 1), (7, 2, 3), (8, 2, 4),
       (9, 3, 3), (10, 3, 2),
       (11, 4, 4), (12, 4, 2),
       (13, 5, 5), (14, 5, 1), (15, 5, 2), (16, 5, 3), (17, 5, 4),
       (21, 1, NULL), (22, 2, NULL), (23, 3, NULL), (24, 4, NULL), (25, 5, NULL);

INSERT INTO qvd_dict_setting (setting_name, setting_value) VALUES ('ElementAggregation', 'Y');

INSERT INTO qvd_field_def (field_id, field_desc, field_aggregator, datatype, field_group_id,
                           field_kind, technologies)
VALUES (1, 'Name of the cell', 13, 'S', 1, 'S', 'GSM, UMTS, LTE, NR'),
       (2, 'Cell identity', 13, 'I', 1, 'S', 'GSM, UMTS, LTE, NR'),
       (3, 'Traffic on traffic channels in Erlang', 6, 'F', 2, 'S', 'GSM'),
       (4, 'Call set-up attempts', 1, 'I', 1, 'S', 'GSM, UMTS'),
       (5, 'Calls dropped after set-up', 1, 'I', 1, 'S', 'GSM, UMTS'),
       (6, 'Dropped calls per hundred attempts', 5, 'F', 2, 'S', 'GSM, UMTS'),
       (7, 'Successful RRC connection set-ups', 1, 'I', 1, 'S', 'UMTS, LTE, NR'),
       (8, 'Physical resource blocks in use, percent', 8, 'F', 2, 'S', 'LTE, NR'),
       (9, 'Name of the site', 13, 'S', 1, 'S', 'GSM, UMTS, LTE, NR'),
       (10, 'Planning code of the site', 13, 'S', 1, 'S', 'GSM, UMTS, LTE, NR'),
       (11, 'Energy used by the site in kWh', 1, 'F', 2, 'S', 'GSM, UMTS, LTE, NR'),
       (12, 'Name of the BSC', 13, 'S', 1, 'S', 'GSM'),
       (13, 'Paging requests sent', 1, 'I', 1, 'S', 'GSM'),
       (14, 'Name of the RNC', 13, 'S', 1, 'S', 'UMTS'),
       (15, 'Iub throughput in Mbit/s', 4, 'F', 2, 'S', 'UMTS'),
       (16, 'Name of the MSC', 13, 'S', 1, 'S', 'GSM, UMTS'),
       (17, 'Processor load, percent', 12, 'F', 2, 'S', 'GSM, UMTS'),
       (18, 'Name of the trunk group', 13, 'S', 1, 'S', 'GSM, UMTS'),
       (19, 'Circuit seizures', 1, 'I', 1, 'S', 'GSM, UMTS'),
       (20, 'Traffic carried in Erlang', 6, 'F', 2, 'S', 'GSM, UMTS'),
       (21, 'Calls blocked per hundred offered', 5, 'F', 2, 'S', 'GSM, UMTS'),
       (22, 'Name of the eNodeB', 13, 'S', 1, 'S', 'LTE'),
       (23, 'Downlink volume in MB', 1, 'F', 1, 'S', 'LTE'),
       (24, 'Name of the gNodeB', 13, 'S', 1, 'S', 'NR'),
       (25, 'Downlink throughput in Mbit/s', 8, 'F', 2, 'S', 'NR'),
       (26, 'Availability of the network, percent', 5, 'F', 2, 'S', 'GSM, UMTS, LTE, NR'),
       (27, 'Name of the region', 13, 'S', 1, 'S', 'GSM, UMTS, LTE, NR'),
       (28, 'Handover attempts from the vendor export', 1, 'I', 3, 'S', 'GSM, UMTS'),
       (29, 'Overflow from the trunk group export', 1, 'I', 3, 'S', 'GSM, UMTS');

INSERT INTO qvd_dict_name (field_id, entity_id, name, report_header, report_header2)
VALUES (1, 7, 'Cell_Name', 'Cell', 'Name'),
       (2, 7, 'CI', 'Cell', 'Identity'),
       (3, 7, 'TCH_Traffic', 'TCH', 'Traffic (Erl)'),
       (4, 7, 'Call_Attempts', 'Call', 'Attempts'),
       (5, 7, 'Dropped_Calls', 'Dropped', 'Calls'),
       (6, 7, 'Drop_Rate_%', 'Drop', 'Rate %'),
       (7, 7, 'RRC_Setup_Success', 'RRC Setup', 'Success'),
       (8, 7, 'PRB_Utilisation', 'PRB', 'Utilisation %'),
       (9, 6, 'Site_Name', 'Site', 'Name'),
       (10, 6, 'Site_Code', 'Site', 'Code'),
       (11, 6, 'Power_Consumption', 'Power', 'kWh'),
       (12, 4, 'BSC_Name', 'BSC', 'Name'),
       (13, 4, 'Paging_Requests', 'Paging', 'Requests'),
       (14, 5, 'RNC_Name', 'RNC', 'Name'),
       (15, 5, 'Iub_Throughput', 'Iub', 'Mbit/s'),
       (16, 3, 'MSC_Name', 'MSC', 'Name'),
       (17, 3, 'Processor_Load', 'Processor', 'Load %'),
       (18, 8, 'Trunk_Group_Name', 'Trunk Group', 'Name'),
       (19, 8, 'Seizures', 'Seizures', ''),
       (20, 8, 'Carried_Traffic', 'Carried', 'Traffic (Erl)'),
       (21, 8, 'Blocking_Rate', 'Blocking', 'Rate %'),
       (22, 9, 'eNodeB_Name', 'eNodeB', 'Name'),
       (23, 9, 'DL_Volume_MB', 'DL Volume', 'MB'),
       (24, 10, 'gNodeB_Name', 'gNodeB', 'Name'),
       (25, 10, 'DL_Throughput', 'DL Throughput', 'Mbit/s'),
       (26, 1, 'Network_Availability', 'Availability', '%'),
       (27, 2, 'Region_Name', 'Region', 'Name'),
       (28, 7, 'HO_Attempts', 'Handover', 'Attempts'),
       (29, 8, 'TG_Overflow', 'Overflow', '');

-- The technologies of each field, from its mask (the second value).
INSERT INTO qvd_field_tech (field_id, tech_id)
SELECT f.column1, t.tech_id
  FROM (VALUES (1, 15), (2, 15), (3, 1), (4, 3), (5, 3), (6, 3), (7, 14), (8, 12), (9, 15),
               (10, 15), (11, 15), (12, 1), (13, 1), (14, 2), (15, 2), (16, 3), (17, 3),
               (18, 3), (19, 3), (20, 3), (21, 3), (22, 4), (23, 4), (24, 8), (25, 8),
               (26, 15), (27, 15), (28, 3), (29, 3)) f,
       qvd_technology t
 WHERE (f.column2 & t.tech_bit) <> 0;

INSERT INTO qvd_extra_column (extra_column_id, app_group, column_name, in_use, display_order)
VALUES (1, 'Traffic', 'Counter', 'Y', 1),
       (2, 'Traffic', 'Vendor', 'Y', 2),
       (3, 'Traffic', 'Unit', 'N', 3);

INSERT INTO qvd_field_extra (field_id, extra_column_id, extra_value)
VALUES (4, 1, 'pmCallAttempts'), (4, 2, 'Generic'),
       (5, 1, 'pmDroppedCalls'), (5, 2, 'Generic'),
       (19, 1, 'NSEIZ'), (19, 2, 'Generic'), (19, 3, 'count');

INSERT INTO pm_template (template_id, template_name)
VALUES (1, 'Cell Daily Traffic'), (2, 'Trunk Group Busy Hour');

INSERT INTO pm_templatefield (templateid, field_id)
VALUES (1, 3), (1, 4), (1, 5), (1, 6), (2, 19), (2, 20), (2, 21);

INSERT INTO qv_frequency (frequency_id, description, minutes)
VALUES (1, '15 Minutes', 15), (2, 'Hourly', 60), (3, 'Daily', 1440), (4, 'Weekly', 10080);

-- Weekly exists only across elements, not for data sources.
INSERT INTO pm_groupby (frequency_id, orientation)
VALUES (1, 'T'), (2, 'T'), (3, 'T'), (2, 'E'), (3, 'E'), (4, 'E');

-- Two stored data sources: an hourly cell file with its time stamp, a key column and a column
-- mapped to an EXT field, and a trunk group table reached over ODBC.
INSERT INTO eds_document (id, name, description, eds_type, entity_id, is_time_series,
                          frequency_id, doc_type)
VALUES (1, 'Cell Traffic Feed', 'Hourly cell counters from the vendor''s file export', 'A', 7,
        'Y', 2, 'ASCII Data Source'),
       (2, 'Trunk Group Export', 'Trunk group counters from the switch statistics database', 'O',
        8, 'N', NULL, 'ODBC Data Source');

INSERT INTO eds_ascii_file (eds_id, filename, separator)
VALUES (1, '/data/feeds/cell_traffic.csv', ',');

INSERT INTO eds_odbc_file (eds_id, db_server, db_database, table_name, db_userid, db_password)
VALUES (2, 'pmdb01', 'PMSTAGE', 'TG_COUNTERS', 'pmreader', NULL);

INSERT INTO eds_column (col_id, eds_id, col_name, col_type, col_position, is_timestamp,
                        editor_position)
VALUES (1, 1, 'Time Stamp', 'D', 1, 'Y', 1),
       (2, 1, 'CELL', 'S', 2, 'N', 2),
       (3, 1, 'HO_ATTEMPTS', 'I', 3, 'N', 3),
       (4, 1, 'COMMENT', 'S', 4, 'N', 4),
       (5, 2, 'TG_NAME', 'S', 1, 'N', 1),
       (6, 2, 'OVERFLOW', 'I', 2, 'N', 2);

INSERT INTO eds_primarykey (pk_id, eds_id, col_id, field_id, ordinal)
VALUES (1, 1, 2, 1, 1), (2, 2, 5, 18, 1);

INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES (1, 3, 28), (2, 6, 29);
