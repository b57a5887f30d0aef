-- The system information views, in the order of their list. Passwords in statements and settings are made unreadable.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name view.DATABASES from=100000 needs=any title=Databases with size, connections, limits and age
SELECT d.datname AS database, pg_get_userbyid(d.datdba) AS owner, pg_encoding_to_char(d.encoding) AS encoding, d.datcollate AS collation,
  CASE WHEN has_database_privilege(d.oid, 'CONNECT') OR pg_has_role(current_user, 'pg_read_all_stats', 'USAGE') THEN pg_size_pretty(pg_database_size(d.oid)) END AS size,
  s.numbackends AS connections, d.datconnlimit AS "connection limit", d.datallowconn AS "may be connected", age(d.datfrozenxid) AS "xid age", t.spcname AS tablespace
FROM pg_database AS d JOIN pg_tablespace AS t ON t.oid = d.dattablespace LEFT JOIN pg_stat_database AS s ON s.datid = d.oid ORDER BY 1;

-- @name view.LOCK_TREE from=100000 needs=any title=Who waits for whom, blockers first
WITH RECURSIVE w AS (SELECT DISTINCT l.pid, b.pid AS blocker FROM pg_locks AS l, unnest(pg_blocking_pids(l.pid)) AS b(pid) WHERE NOT l.granted),
t AS (SELECT blocker AS pid, 0 AS level, ARRAY[blocker] AS path FROM w WHERE blocker NOT IN (SELECT pid FROM w)
  UNION SELECT w.pid, t.level + 1, t.path || w.pid FROM t JOIN w ON w.blocker = t.pid WHERE w.pid <> ALL (t.path) AND t.level < 20)
SELECT repeat('. ', t.level) || t.pid AS process, a.datname AS database, a.usename AS "user", a.application_name AS application, a.state,
  date_trunc('second', clock_timestamp() - a.xact_start)::text AS "in transaction",
  (SELECT string_agg(DISTINCT l.mode || ' ' || l.locktype || coalesce(' ' || l.relation::regclass::text, ''), ', ')
     FROM pg_locks AS l WHERE l.pid = t.pid AND NOT l.granted AND (l.database = (SELECT oid FROM pg_database WHERE datname = current_database()) OR l.relation IS NULL)) AS "waits for",
  left(regexp_replace(a.query, '(password\s+)(''[^'']*''|\S+)', '\1***', 'gi'), 200) AS statement
FROM t LEFT JOIN pg_stat_activity AS a ON a.pid = t.pid ORDER BY t.path;

-- @name view.LOCKS from=100000 needs=any title=Locks that are held or waited for
SELECT l.pid AS process, a.usename AS "user", l.locktype AS type, l.mode, l.granted,
  CASE WHEN l.database = d.oid OR l.database = 0 THEN l.relation::regclass::text ELSE l.relation::text END AS relation, l.page, l.tuple, l.transactionid::text AS transaction, l.virtualxid AS "virtual transaction"
FROM pg_locks AS l LEFT JOIN pg_stat_activity AS a ON a.pid = l.pid, pg_database AS d
WHERE d.datname = current_database() AND l.pid IS DISTINCT FROM pg_backend_pid() ORDER BY l.granted, l.pid, l.locktype;

-- @name view.LONG_TRANSACTIONS from=100000 needs=any title=Open transactions, oldest first; they keep VACUUM from removing rows
SELECT pid AS process, datname AS database, usename AS "user", application_name AS application, state,
  date_trunc('second', clock_timestamp() - xact_start)::text AS duration, age(backend_xmin) AS "xmin age", backend_xid::text AS xid, left(regexp_replace(query, '(password\s+)(''[^'']*''|\S+)', '\1***', 'gi'), 200) AS statement
FROM pg_stat_activity WHERE xact_start IS NOT NULL AND pid <> pg_backend_pid() ORDER BY xact_start;

-- @name view.PREPARED_TRANSACTIONS from=100000 needs=any title=Prepared transactions that nobody has ended
SELECT gid AS "global id", database, owner, prepared::timestamp(0)::text AS prepared, age(transaction) AS "xid age" FROM pg_prepared_xacts ORDER BY prepared;

-- @name view.WAITS from=100000 needs=any title=What sessions and background processes wait for now
SELECT coalesce(wait_event_type, '(running)') AS type, coalesce(wait_event, '') AS event, count(*) AS processes, string_agg(DISTINCT state, ', ') AS states
FROM pg_stat_activity WHERE pid <> pg_backend_pid() GROUP BY 1, 2 ORDER BY 3 DESC, 1, 2;

-- @name view.TOP_STATEMENTS from=130000 needs=ext:pg_stat_statements title=Statements by total time
SELECT d.datname AS database, pg_get_userbyid(s.userid) AS "user", s.calls, round(s.total_exec_time::numeric, 1) AS "total ms",
  round(s.mean_exec_time::numeric, 3) AS "mean ms", round(s.max_exec_time::numeric, 1) AS "max ms", s.rows, s.shared_blks_hit AS "blocks hit", s.shared_blks_read AS "blocks read",
  s.temp_blks_written AS "temp blocks written", round(s.wal_bytes / 1024) AS "log KB", left(regexp_replace(regexp_replace(s.query, '(password\s+)(''[^'']*''|\S+)', '\1***', 'gi'), '\s+', ' ', 'g'), 400) AS statement
FROM @S.pg_stat_statements AS s LEFT JOIN pg_database AS d ON d.oid = s.dbid ORDER BY s.total_exec_time DESC LIMIT 500;

-- @name view.TOP_STATEMENTS from=100000 below=130000 needs=ext:pg_stat_statements title=Statements by total time
SELECT d.datname AS database, pg_get_userbyid(s.userid) AS "user", s.calls, round(s.total_time::numeric, 1) AS "total ms",
  round(s.mean_time::numeric, 3) AS "mean ms", round(s.max_time::numeric, 1) AS "max ms", s.rows, s.shared_blks_hit AS "blocks hit", s.shared_blks_read AS "blocks read",
  s.temp_blks_written AS "temp blocks written", left(regexp_replace(regexp_replace(s.query, '(password\s+)(''[^'']*''|\S+)', '\1***', 'gi'), '\s+', ' ', 'g'), 400) AS statement
FROM @S.pg_stat_statements AS s LEFT JOIN pg_database AS d ON d.oid = s.dbid ORDER BY s.total_time DESC LIMIT 500;

-- @name view.LARGEST_TABLES from=100000 needs=any title=Tables of this database by pages as of their last VACUUM or ANALYZE
SELECT n.nspname AS schema, c.relname AS "table", c.reltuples::bigint AS rows, c.relpages AS pages, coalesce(t.relpages, 0) AS "TOAST pages",
  (SELECT coalesce(sum(i.relpages), 0) FROM pg_index AS x JOIN pg_class AS i ON i.oid = x.indexrelid WHERE x.indrelid = c.oid) AS "index pages",
  coalesce(s.spcname, 'pg_default') AS tablespace
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace LEFT JOIN pg_class AS t ON t.oid = c.reltoastrelid LEFT JOIN pg_tablespace AS s ON s.oid = c.reltablespace
WHERE c.relkind IN ('r', 'm') ORDER BY c.relpages + coalesce(t.relpages, 0) DESC, 1, 2 LIMIT 500;

-- @name view.TABLE_ACTIVITY from=100000 needs=any title=Scans, changes and dead rows of each table of this database
SELECT schemaname AS schema, relname AS "table", seq_scan AS "table scans", seq_tup_read AS "rows scanned", idx_scan AS "index scans", n_tup_ins AS inserted, n_tup_upd AS updated,
  n_tup_hot_upd AS "updated in page", n_tup_del AS deleted, n_live_tup AS "live rows", n_dead_tup AS "dead rows"
FROM pg_stat_user_tables ORDER BY coalesce(seq_tup_read, 0) + coalesce(idx_tup_fetch, 0) DESC, 1, 2;

-- @name view.VACUUM_NEEDED from=130000 needs=any title=Tables of this database that autovacuum is due for, or has not reached
WITH o AS (SELECT c.oid, c.reltuples, n.nspname, c.relname, c.relfrozenxid, (SELECT jsonb_object_agg(option_name, option_value) FROM pg_options_to_table(c.reloptions)) AS opt
  FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('r', 'm'))
SELECT o.nspname AS schema, o.relname AS "table", s.n_dead_tup AS "dead rows", v.at::bigint AS "vacuum at", s.n_mod_since_analyze AS "changed since analyze", age(o.relfrozenxid) AS "xid age",
  greatest(s.last_vacuum, s.last_autovacuum)::timestamp(0)::text AS "last vacuum", greatest(s.last_analyze, s.last_autoanalyze)::timestamp(0)::text AS "last analyze"
FROM o JOIN pg_stat_all_tables AS s ON s.relid = o.oid,
  LATERAL (SELECT coalesce((o.opt->>'autovacuum_vacuum_threshold')::float8, current_setting('autovacuum_vacuum_threshold')::float8)
    + coalesce((o.opt->>'autovacuum_vacuum_scale_factor')::float8, current_setting('autovacuum_vacuum_scale_factor')::float8) * greatest(o.reltuples, 0) AS at) AS v
WHERE s.n_dead_tup > v.at OR age(o.relfrozenxid) > current_setting('autovacuum_freeze_max_age')::int OR o.opt->>'autovacuum_enabled' = 'false'
ORDER BY s.n_dead_tup DESC;

-- @name view.VACUUM_NEEDED from=100000 below=130000 needs=any title=Tables of this database that autovacuum is due for, or has not reached
WITH o AS (SELECT c.oid, c.reltuples, n.nspname, c.relname, c.relfrozenxid, (SELECT jsonb_object_agg(option_name, option_value) FROM pg_options_to_table(c.reloptions)) AS opt
  FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('r', 'm'))
SELECT o.nspname AS schema, o.relname AS "table", s.n_dead_tup AS "dead rows", v.at::bigint AS "vacuum at", s.n_mod_since_analyze AS "changed since analyze", age(o.relfrozenxid) AS "xid age",
  greatest(s.last_vacuum, s.last_autovacuum)::timestamp(0)::text AS "last vacuum", greatest(s.last_analyze, s.last_autoanalyze)::timestamp(0)::text AS "last analyze"
FROM o JOIN pg_stat_all_tables AS s ON s.relid = o.oid,
  LATERAL (SELECT coalesce((o.opt->>'autovacuum_vacuum_threshold')::float8, current_setting('autovacuum_vacuum_threshold')::float8)
    + coalesce((o.opt->>'autovacuum_vacuum_scale_factor')::float8, current_setting('autovacuum_vacuum_scale_factor')::float8) * greatest(o.reltuples, 0) AS at) AS v
WHERE s.n_dead_tup > v.at OR age(o.relfrozenxid) > current_setting('autovacuum_freeze_max_age')::int OR o.opt->>'autovacuum_enabled' = 'false'
ORDER BY s.n_dead_tup DESC;

-- @name view.VACUUM_PROGRESS from=100000 needs=any title=VACUUM that runs now
SELECT p.pid AS process, p.datname AS database, p.relid::regclass::text AS "table", p.phase, p.heap_blks_total AS pages, p.heap_blks_scanned AS scanned, p.heap_blks_vacuumed AS vacuumed,
  date_trunc('second', clock_timestamp() - a.xact_start)::text AS duration FROM pg_stat_progress_vacuum AS p LEFT JOIN pg_stat_activity AS a ON a.pid = p.pid ORDER BY 1;

-- @name view.WRAPAROUND from=100000 needs=any title=Ages against the limit at which the server refuses to write
SELECT d.datname AS database, age(d.datfrozenxid) AS "xid age", round(100.0 * age(d.datfrozenxid) / 2146483647, 2) AS "xid %", mxid_age(d.datminmxid) AS "multixact age",
  round(100.0 * mxid_age(d.datminmxid) / 2146483647, 2) AS "multixact %", current_setting('autovacuum_freeze_max_age') AS "forced vacuum at" FROM pg_database AS d ORDER BY 2 DESC, 1;

-- @name view.TABLE_BLOAT from=100000 needs=any title=Estimated unused space of tables (from statistics: needs ANALYZE and the right to read)
WITH w AS (SELECT s.schemaname, s.tablename, sum((1 - s.null_frac) * s.avg_width) AS width, max(s.null_frac) AS nulls, count(*) AS columns FROM pg_stats AS s GROUP BY 1, 2),
e AS (SELECT n.nspname, c.relname, c.reltuples, c.relpages, current_setting('block_size')::int AS bs,
    24 + CASE WHEN w.nulls > 0 THEN (w.columns + 7) / 8 ELSE 0 END + w.width + 4 AS tuple, coalesce(substring(array_to_string(c.reloptions, ' ') FROM 'fillfactor=([0-9]+)')::int, 100) AS ff
  FROM w JOIN pg_namespace AS n ON n.nspname = w.schemaname JOIN pg_class AS c ON c.relnamespace = n.oid AND c.relname = w.tablename WHERE c.relkind IN ('r', 'm') AND c.relpages > 0 AND c.reltuples > 0)
SELECT nspname AS schema, relname AS "table", relpages AS pages, ceil(reltuples * (ceil(tuple / 8) * 8) / ((bs - 24) * ff / 100.0))::bigint AS "pages needed",
  greatest(0, round((100 * (1 - ceil(reltuples * (ceil(tuple / 8) * 8) / ((bs - 24) * ff / 100.0)) / relpages))::numeric, 1)) AS "unused %" FROM e WHERE relpages >= 10 ORDER BY greatest(0, relpages - ceil(reltuples * (ceil(tuple / 8) * 8) / ((bs - 24) * ff / 100.0))) DESC, 1, 2 LIMIT 500;

-- @name view.UNUSED_INDEXES from=100000 needs=any title=Indexes of this database without a scan since statistics began (look at the standbys, too)
SELECT s.schemaname AS schema, s.relname AS "table", s.indexrelname AS index, c.relpages AS pages, s.idx_scan AS scans, (SELECT stats_reset::timestamp(0)::text FROM pg_stat_database WHERE datname = current_database()) AS "counted since"
FROM pg_stat_user_indexes AS s JOIN pg_index AS i ON i.indexrelid = s.indexrelid JOIN pg_class AS c ON c.oid = s.indexrelid
WHERE s.idx_scan = 0 AND NOT i.indisunique AND NOT EXISTS (SELECT FROM pg_constraint AS k WHERE k.conindid = i.indexrelid) ORDER BY c.relpages DESC, 1, 2, 3;

-- @name view.REDUNDANT_INDEXES from=100000 needs=any title=Indexes of the same columns in the same table
SELECT i.indrelid::regclass::text AS "table", string_agg(i.indexrelid::regclass::text, ', ' ORDER BY i.indexrelid) AS indexes, sum(c.relpages) AS pages
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid GROUP BY i.indrelid, i.indkey::text, i.indclass::text, i.indcollation::text, i.indoption::text, c.relam, coalesce(i.indexprs::text, ''), coalesce(i.indpred::text, '') HAVING count(*) > 1 ORDER BY 3 DESC;

-- @name view.BAD_INDEXES from=100000 needs=any title=Indexes that are not used because they are invalid or not ready
SELECT n.nspname AS schema, i.indrelid::regclass::text AS "table", c.relname AS index, i.indisvalid AS valid, i.indisready AS ready, c.relpages AS pages
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE NOT (i.indisvalid AND i.indisready) ORDER BY 1, 2, 3;

-- @name view.FOREIGN_KEYS_WITHOUT_INDEX from=100000 needs=any title=References whose columns no index of the table begins with
SELECT c.conrelid::regclass::text AS "table", c.conname AS "foreign key", c.confrelid::regclass::text AS "referenced table", r.relpages AS pages
FROM pg_constraint AS c JOIN pg_class AS r ON r.oid = c.conrelid WHERE c.contype = 'f'
  AND NOT EXISTS (SELECT FROM pg_index AS i WHERE i.indrelid = c.conrelid AND i.indpred IS NULL AND (i.indkey::int2[])[0:array_length(c.conkey, 1) - 1] @> c.conkey) ORDER BY r.relpages DESC, 1, 2;

-- @name view.SEQUENCES from=100000 needs=any title=How much of each sequence is used up
SELECT schemaname AS schema, sequencename AS sequence, data_type::text AS type, last_value AS "last value", CASE WHEN increment_by > 0 THEN max_value ELSE min_value END AS "end", cycle,
  round(CASE WHEN increment_by > 0 THEN 100.0 * (last_value::numeric - min_value) / nullif(max_value::numeric - min_value, 0) ELSE 100.0 * (max_value::numeric - last_value) / nullif(max_value::numeric - min_value, 0) END, 2) AS "used %"
FROM pg_sequences ORDER BY 7 DESC NULLS LAST, 1, 2;

-- @name view.REPLICATION_SLOTS from=130000 needs=any title=Replication slots and the log that they keep
SELECT slot_name AS slot, slot_type AS type, plugin, database, active, active_pid AS process, restart_lsn::text AS "keeps from",
  pg_size_pretty(pg_wal_lsn_diff(CASE WHEN pg_is_in_recovery() THEN pg_last_wal_replay_lsn() ELSE pg_current_wal_lsn() END, restart_lsn)) AS "log kept", wal_status AS state, pg_size_pretty(safe_wal_size) AS "room left", age(xmin) AS "xmin age", age(catalog_xmin) AS "catalog xmin age"
FROM pg_replication_slots ORDER BY 1;

-- @name view.REPLICATION_SLOTS from=100000 below=130000 needs=any title=Replication slots and the log that they keep
SELECT slot_name AS slot, slot_type AS type, plugin, database, active, active_pid AS process, restart_lsn::text AS "keeps from",
  pg_size_pretty(pg_wal_lsn_diff(CASE WHEN pg_is_in_recovery() THEN pg_last_wal_replay_lsn() ELSE pg_current_wal_lsn() END, restart_lsn)) AS "log kept", age(xmin) AS "xmin age", age(catalog_xmin) AS "catalog xmin age"
FROM pg_replication_slots ORDER BY 1;

-- @name view.REPLICATION from=100000 needs=any title=Standbys and other receivers of the log
SELECT pid AS process, usename AS "user", application_name AS name, host(client_addr) AS host, state, sync_state AS "kind", sent_lsn::text AS sent, replay_lsn::text AS replayed,
  write_lag::text AS "write lag", flush_lag::text AS "flush lag", replay_lag::text AS "replay lag" FROM pg_stat_replication ORDER BY pid;

-- @name view.ARCHIVER from=100000 needs=any record title=How the archiving of the log goes
SELECT current_setting('archive_mode') AS "Archive mode", CASE WHEN pg_has_role(current_user, 'pg_read_all_settings', 'USAGE') THEN current_setting('archive_command') END AS "Archive command", archived_count AS "Segments archived",
  last_archived_wal AS "Last archived", last_archived_time::timestamp(0)::text AS "Archived at", failed_count AS "Failures", last_failed_wal AS "Last failed", last_failed_time::timestamp(0)::text AS "Failed at", stats_reset::timestamp(0)::text AS "Counted since" FROM pg_stat_archiver;

-- @name view.CHECKPOINTS from=100000 below=170000 needs=any record title=Checkpoints and background writing
SELECT c.checkpoint_time::timestamp(0)::text AS "Last checkpoint", c.redo_lsn::text AS "Redo from", c.timeline_id AS "Timeline", b.checkpoints_timed AS "By time", b.checkpoints_req AS "By request or volume", round(b.checkpoint_write_time) AS "Write ms", round(b.checkpoint_sync_time) AS "Sync ms",
  b.buffers_checkpoint AS "Pages by checkpoints", b.buffers_clean AS "Pages by background writer", b.buffers_backend AS "Pages by sessions", b.stats_reset::timestamp(0)::text AS "Counted since" FROM pg_stat_bgwriter AS b, pg_control_checkpoint() AS c;

-- @name view.CHECKPOINTS from=170000 needs=any record title=Checkpoints and background writing
SELECT c.checkpoint_time::timestamp(0)::text AS "Last checkpoint", c.redo_lsn::text AS "Redo from", c.timeline_id AS "Timeline", k.num_timed AS "By time", k.num_requested AS "By request or volume", round(k.write_time) AS "Write ms", round(k.sync_time) AS "Sync ms",
  k.buffers_written AS "Pages by checkpoints", b.buffers_clean AS "Pages by background writer", (SELECT sum(writes) FROM pg_stat_io WHERE backend_type = 'client backend' AND object = 'relation') AS "Pages by sessions", k.stats_reset::timestamp(0)::text AS "Counted since"
FROM pg_stat_checkpointer AS k, pg_stat_bgwriter AS b, pg_control_checkpoint() AS c;

-- @name view.IO from=160000 needs=any title=Reads and writes by kind of process
SELECT backend_type AS process, object, context, reads, writes, extends, hits, evictions, fsyncs FROM pg_stat_io WHERE coalesce(reads, 0) + coalesce(writes, 0) + coalesce(hits, 0) + coalesce(extends, 0) > 0 ORDER BY coalesce(reads, 0) + coalesce(writes, 0) DESC, 1, 2, 3;

-- @name view.TEMPORARY_FILES from=100000 needs=any title=Sorts and hashes that did not fit into memory, deadlocks and conflicts by database
SELECT datname AS database, temp_files AS files, pg_size_pretty(temp_bytes) AS size, deadlocks, conflicts, stats_reset::timestamp(0)::text AS "counted since" FROM pg_stat_database WHERE datname IS NOT NULL ORDER BY temp_bytes DESC, 1;

-- @name view.CHECKSUMS from=120000 needs=any title=Pages whose checksum was wrong
SELECT coalesce(datname, '(shared)') AS database, current_setting('data_checksums') AS checksums, checksum_failures AS failures, checksum_last_failure::timestamp(0)::text AS "last failure" FROM pg_stat_database ORDER BY checksum_failures DESC NULLS LAST, 1;

-- @name view.FILE_SETTINGS from=100000 needs=super title=What the configuration files say, line by line, with errors
SELECT sourcefile AS file, sourceline AS line, name, regexp_replace(setting, '(password\s*=\s*)(''[^'']*''|\S+)', '\1***', 'gi') AS setting, applied, error FROM pg_file_settings ORDER BY seqno;

-- @name view.HBA_RULES from=100000 needs=super title=Rules of pg_hba.conf, with errors
SELECT line_number AS line, type, array_to_string(database, ', ') AS databases, array_to_string(user_name, ', ') AS users, address, netmask AS mask, auth_method AS method, array_to_string(options, ', ') AS options, error FROM pg_hba_file_rules ORDER BY line_number;

-- @name view.ROLES from=100000 needs=any title=Roles with their rights and limits
SELECT r.rolname AS role, r.rolsuper AS super, r.rolcanlogin AS login, r.rolcreatedb AS "creates databases", r.rolcreaterole AS "creates roles", r.rolreplication AS replication, r.rolbypassrls AS "bypasses row security", r.rolconnlimit AS "connection limit",
  r.rolvaliduntil::text AS "password until", (SELECT string_agg(g.rolname, ', ' ORDER BY g.rolname) FROM pg_auth_members AS m JOIN pg_roles AS g ON g.oid = m.roleid WHERE m.member = r.oid) AS "member of" FROM pg_roles AS r WHERE r.rolname !~ '^pg_' ORDER BY 1;

-- @name view.EXTENSIONS from=100000 needs=any title=Extensions of this database  (pg_available_extensions fails as a whole over one bad control file)
SELECT e.extname AS extension, e.extversion AS version, n.nspname AS schema, pg_get_userbyid(e.extowner) AS owner, obj_description(e.oid, 'pg_extension') AS description FROM pg_extension AS e JOIN pg_namespace AS n ON n.oid = e.extnamespace ORDER BY 1;

-- @name view.WAL_FILES from=100000 needs=stats title=Segments of the log
SELECT w.name AS segment, w.size AS bytes, w.modification::timestamp(0)::text AS modified FROM pg_ls_waldir() AS w WHERE w.name ~ '^[0-9A-F]{24}$' ORDER BY 1 DESC;
