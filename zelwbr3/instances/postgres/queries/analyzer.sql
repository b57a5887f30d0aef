-- What the analyzer evaluates besides the state.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name counters.databases from=100000 needs=any
SELECT max(stats_reset)::text AS reset, sum(xact_commit)::float8 AS commits, sum(xact_rollback)::float8 AS rollbacks, sum(tup_inserted)::float8 AS inserted, sum(tup_updated)::float8 AS updated,
  sum(tup_deleted)::float8 AS deleted, sum(tup_returned)::float8 AS returned, sum(deadlocks)::float8 AS deadlocks, sum(temp_bytes)::float8 AS temp_bytes,
  sum(blks_hit)::float8 AS hit, sum(blks_read)::float8 AS read, sum(blk_read_time)::float8 AS read_time FROM pg_stat_database;

-- @name counters.checkpoints from=100000 below=170000 needs=any
SELECT stats_reset::text AS reset, checkpoints_timed::float8 AS by_time, checkpoints_req::float8 AS by_volume, (buffers_checkpoint + buffers_clean + buffers_backend)::float8 AS written,
  buffers_backend::float8 AS by_sessions FROM pg_stat_bgwriter;

-- @name counters.checkpoints from=170000 needs=any
SELECT k.stats_reset::text AS reset, k.num_timed::float8 AS by_time, k.num_requested::float8 AS by_volume, (k.buffers_written + b.buffers_clean + s.writes)::float8 AS written, s.writes AS by_sessions
FROM pg_stat_checkpointer AS k, pg_stat_bgwriter AS b,
  (SELECT coalesce(sum(writes), 0)::float8 AS writes FROM pg_stat_io WHERE backend_type = 'client backend' AND object = 'relation') AS s;

-- @name counters.log from=100000 needs=any
SELECT NULL AS reset, pg_wal_lsn_diff(CASE WHEN pg_is_in_recovery() THEN coalesce(pg_last_wal_receive_lsn(), pg_last_wal_replay_lsn()) ELSE pg_current_wal_lsn() END, '0/0')::float8 AS log_bytes;

-- @name counters.overflows from=140000 needs=any
SELECT stats_reset::text AS reset, wal_buffers_full::float8 AS log_overflows FROM pg_stat_wal;

-- @name evaluated.sessions from=100000 needs=stats
SELECT count(*) FILTER (WHERE state = 'active') AS active, count(*) FILTER (WHERE state LIKE 'idle in transaction%') AS idle_in_transaction,
  count(*) FILTER (WHERE wait_event_type = 'Lock') AS waiting, greatest(0, max(extract(epoch FROM clock_timestamp() - xact_start)))::bigint AS oldest
FROM pg_stat_activity WHERE backend_type = 'client backend' AND pid <> pg_backend_pid();

-- @name evaluated.waits from=140000 needs=stats  (blocked_by: of the one that waits longest; a prepared transaction has process 0)
SELECT count(*) AS waiting, greatest(0, max(w.seconds))::bigint AS seconds, (pg_blocking_pids((array_agg(w.pid ORDER BY w.seconds DESC))[1]))[1] AS blocked_by
FROM (SELECT l.pid, max(extract(epoch FROM clock_timestamp() - l.waitstart)) AS seconds FROM pg_locks AS l WHERE NOT l.granted GROUP BY l.pid) AS w;

-- @name evaluated.waits from=100000 below=140000 needs=stats
SELECT count(*) AS waiting, greatest(0, max(w.seconds))::bigint AS seconds, (pg_blocking_pids((array_agg(w.pid ORDER BY w.seconds DESC))[1]))[1] AS blocked_by
FROM (SELECT pid, extract(epoch FROM clock_timestamp() - state_change) AS seconds FROM pg_stat_activity WHERE wait_event_type = 'Lock') AS w;

-- @name evaluated.transaction from=100000 needs=stats  (the oldest)
SELECT pid, coalesce(usename, '') AS "user", extract(epoch FROM clock_timestamp() - xact_start)::bigint AS seconds
FROM pg_stat_activity WHERE xact_start IS NOT NULL AND backend_type = 'client backend' AND pid <> pg_backend_pid() ORDER BY xact_start LIMIT 1;

-- @name evaluated.archiver from=100000 needs=any
SELECT last_failed_wal AS segment, last_failed_time::timestamp(0)::text AS since FROM pg_stat_archiver WHERE last_failed_time > coalesce(last_archived_time, '-infinity');

-- @name evaluated.slots from=100000 needs=any
SELECT slot_name, pg_wal_lsn_diff(CASE WHEN pg_is_in_recovery() THEN pg_last_wal_replay_lsn() ELSE pg_current_wal_lsn() END, restart_lsn)::bigint AS kept
FROM pg_replication_slots WHERE restart_lsn IS NOT NULL ORDER BY restart_lsn;

-- @name evaluated.wraparound from=100000 needs=any
SELECT datname, 100.0 * greatest(age(datfrozenxid), mxid_age(datminmxid)) / 2146483647 AS percent FROM pg_database ORDER BY 2 DESC LIMIT 1;

-- @name evaluated.tables from=100000 needs=any  (of this database; twice as many dead rows as autovacuum starts at)
WITH o AS (SELECT c.oid, c.reltuples, (SELECT jsonb_object_agg(option_name, option_value) FROM pg_options_to_table(c.reloptions)) AS opt FROM pg_class AS c WHERE c.relkind IN ('r', 'm'))
SELECT s.schemaname || '.' || s.relname AS "table", 100.0 * s.n_dead_tup / greatest(1, s.n_live_tup + s.n_dead_tup) AS percent, greatest(s.last_vacuum, s.last_autovacuum)::timestamp(0)::text AS vacuumed
FROM o JOIN pg_stat_all_tables AS s ON s.relid = o.oid
WHERE s.n_dead_tup > 2 * (coalesce((o.opt->>'autovacuum_vacuum_threshold')::float8, current_setting('autovacuum_vacuum_threshold')::float8)
  + coalesce((o.opt->>'autovacuum_vacuum_scale_factor')::float8, current_setting('autovacuum_vacuum_scale_factor')::float8) * greatest(o.reltuples, 0))
ORDER BY s.n_dead_tup DESC LIMIT 5;
