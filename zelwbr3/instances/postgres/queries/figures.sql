-- Parameters, storage, caches, activity and sessions.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name parameters from=100000 needs=any  (what this connection has set for itself is shown as the server has it)
SELECT name, CASE WHEN source = 'session' THEN reset_val ELSE setting END AS setting, unit, category, short_desc, extra_desc, context, vartype,
  CASE WHEN source = 'session' THEN 'default' ELSE source END AS source, min_val, max_val, enumvals::text, boot_val, reset_val, sourcefile, sourceline, pending_restart,
  CASE WHEN source = 'session' THEN reset_val || CASE WHEN reset_val IN ('0', '-1') THEN '' ELSE coalesce(unit, '') END WHEN unit IS NOT NULL THEN current_setting(name) ELSE setting END AS shown
FROM pg_settings WHERE name NOT IN ('transaction_deferrable', 'transaction_isolation', 'transaction_read_only', 'in_hot_standby') ORDER BY lower(name);

-- @name parameters.pending from=100000 needs=super  (what a restart would bring; the last one of a name wins)
SELECT DISTINCT ON (lower(name)) name, setting, sourcefile, sourceline, applied, error FROM pg_file_settings
WHERE name IS NOT NULL ORDER BY lower(name), seqno DESC;

-- @name tablespaces from=100000 needs=any
SELECT t.oid, t.spcname AS name, pg_tablespace_location(t.oid) AS location, pg_get_userbyid(t.spcowner) AS owner,
  CASE WHEN pg_has_role(current_user, 'pg_read_all_stats', 'USAGE') OR has_tablespace_privilege(t.oid, 'CREATE')
         OR t.oid = (SELECT dattablespace FROM pg_database WHERE datname = current_database())
       THEN pg_tablespace_size(t.oid) END AS bytes,
  (SELECT count(*) FROM pg_database AS d WHERE d.dattablespace = t.oid) AS databases
FROM pg_tablespace AS t ORDER BY t.oid;

-- @name tablespaces.io from=100000 needs=any  (of this database; blocks read from outside the cache)
SELECT coalesce(nullif(c.reltablespace, 0), d.dattablespace) AS tablespace, sum(pg_stat_get_blocks_fetched(c.oid) - pg_stat_get_blocks_hit(c.oid))::float8 AS read
FROM pg_class AS c, pg_database AS d WHERE d.datname = current_database() AND c.relkind IN ('r', 'i', 't', 'm')
GROUP BY 1;

-- @name caches from=100000 needs=any
SELECT (SELECT setting::bigint FROM pg_settings WHERE name = 'shared_buffers') AS buffers,
  sum(blks_hit)::float8 AS hit, sum(blks_read)::float8 AS read FROM pg_stat_database;

-- @name caches.used from=160000 needs=ext:pg_buffercache+stats
SELECT buffers_used, buffers_unused, buffers_dirty FROM @S.pg_buffercache_summary();

-- @name caches.used from=100000 below=160000 needs=ext:pg_buffercache+stats  (only up to 131072 buffers: it looks at each)
SELECT count(*) FILTER (WHERE relfilenode IS NOT NULL) AS buffers_used, count(*) FILTER (WHERE relfilenode IS NULL) AS buffers_unused,
  count(*) FILTER (WHERE isdirty) AS buffers_dirty FROM @S.pg_buffercache;

-- @name caches.catalog from=150000 below=180000 needs=stats  (of this connection)
SELECT sum(total_bytes)::float8 AS bytes FROM pg_backend_memory_contexts
WHERE name = 'CacheMemoryContext' OR parent = 'CacheMemoryContext';

-- @name caches.catalog from=180000 needs=stats  (of this connection)
SELECT sum(c.total_bytes)::float8 AS bytes FROM pg_backend_memory_contexts AS c, pg_backend_memory_contexts AS r
WHERE r.name = 'CacheMemoryContext' AND r.path[r.level] = ANY (c.path);

-- @name activity.databases from=100000 needs=any
SELECT sum(xact_commit)::float8 AS commits, sum(xact_rollback)::float8 AS rollbacks, sum(blks_read)::float8 AS read,
  sum(blks_hit)::float8 AS hit, sum(tup_returned)::float8 AS returned, sum(tup_fetched)::float8 AS fetched,
  sum(tup_inserted)::float8 AS inserted, sum(tup_updated)::float8 AS updated, sum(tup_deleted)::float8 AS deleted,
  sum(deadlocks)::float8 AS deadlocks FROM pg_stat_database;

-- @name activity.scans from=100000 needs=any  (of this database)
SELECT sum(pg_stat_get_numscans(c.oid)) FILTER (WHERE c.relkind <> 'i')::float8 AS table_scans,
  sum(pg_stat_get_numscans(c.oid)) FILTER (WHERE c.relkind = 'i')::float8 AS index_scans
FROM pg_class AS c WHERE c.relkind IN ('r', 't', 'm', 'i');

-- @name activity.writes from=100000 below=170000 needs=any
SELECT (buffers_checkpoint + buffers_clean + buffers_backend)::float8 AS written FROM pg_stat_bgwriter;

-- @name activity.writes from=170000 below=180000 needs=any
SELECT sum(writes)::float8 AS written FROM pg_stat_io WHERE object = 'relation';

-- @name activity.writes from=180000 needs=any
SELECT sum(write_bytes / current_setting('block_size')::int)::float8 AS written FROM pg_stat_io WHERE object = 'relation';

-- @name activity.wal from=140000 needs=any
SELECT floor(wal_bytes / current_setting('wal_block_size')::int)::float8 AS pages, wal_buffers_full::float8 AS overflows FROM pg_stat_wal;

-- @name activity.locks from=100000 needs=any
SELECT current_setting('max_locks_per_transaction')::float8 * (current_setting('max_connections')::int + current_setting('max_prepared_transactions')::int) AS entries,
  count(*) FILTER (WHERE locktype = 'relation' AND granted)::float8 AS tables,
  count(DISTINCT pid) FILTER (WHERE granted)::float8 AS owners, count(DISTINCT pid) FILTER (WHERE NOT granted)::float8 AS requestors
FROM pg_locks WHERE pid IS DISTINCT FROM pg_backend_pid();

-- @name activity.statements from=100000 needs=ext:pg_stat_statements
SELECT upper((regexp_match(query, '^(?:\s|/\*.*?\*/|--[^\n]*\n|\()*([A-Za-z]+)'))[1]) AS word, sum(calls)::float8 AS calls, sum(rows)::float8 AS rows
FROM @S.pg_stat_statements GROUP BY 1 ORDER BY 2 DESC;

-- @name activity.functions from=100000 needs=any  (of this database; nothing is counted unless track_functions is set)
SELECT CASE WHEN current_setting('track_functions') <> 'none' THEN coalesce(sum(calls), 0) END::float8 AS calls FROM pg_stat_user_functions;

-- @name sessions from=100000 needs=any  (the kind of others' processes is hidden without stats: those of users and databases)
SELECT a.pid, a.datname, a.usename, a.application_name, coalesce(host(a.client_addr), CASE WHEN a.client_port = -1 THEN 'local' END) AS client,
  to_hex(trunc(extract(epoch FROM a.backend_start))::bigint) || '.' || to_hex(a.pid) AS log_session,
  extract(epoch FROM a.backend_start)::bigint AS since, a.state, a.wait_event_type, a.wait_event,
  extract(epoch FROM clock_timestamp() - a.xact_start)::bigint AS in_transaction,
  extract(epoch FROM clock_timestamp() - a.state_change)::bigint AS in_state,
  CASE WHEN a.wait_event_type = 'Lock' THEN array_to_string(pg_blocking_pids(a.pid), ', ') END AS blocked_by,
  left(regexp_replace(regexp_replace(btrim(a.query), '(password\s+)(''[^'']*''|\S+)', '\1***', 'gi'), '\s+', ' ', 'g'), 1000) AS query
FROM pg_stat_activity AS a WHERE a.backend_type IN ('client backend', 'walsender') OR (a.backend_type IS NULL AND a.usesysid IS NOT NULL AND a.datid IS NOT NULL) ORDER BY a.backend_start, a.pid;

-- @name slot.oldest from=100000 needs=any  (the one that keeps the most of the log)
SELECT slot_name FROM pg_replication_slots WHERE restart_lsn IS NOT NULL ORDER BY restart_lsn LIMIT 1;

-- @name activity.plans from=130000 needs=ext:pg_stat_statements
SELECT CASE WHEN current_setting('pg_stat_statements.track_planning', true) = 'on' THEN sum(plans) END::float8 AS plans
FROM @S.pg_stat_statements;
