-- The state of the server and its standbys.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name reading.data from=100000 needs=any  (skipped, not an error, what may not be looked at: complete says so)
SELECT coalesce(sum(size), 0)::bigint AS perm, bool_and(size IS NOT NULL) AS complete FROM (
  SELECT CASE WHEN pg_has_role(current_user, r.oid, 'USAGE') OR has_database_privilege(d.oid, 'CONNECT')
              THEN pg_database_size(d.oid) END AS size
  FROM pg_database AS d, (SELECT coalesce((SELECT oid FROM pg_roles WHERE rolname = 'pg_read_all_stats'),
                                          (SELECT min(oid) FROM pg_roles WHERE rolsuper)) AS oid) AS r
  WHERE d.datconnlimit <> -2) AS s;

-- @name reading.temp from=120000 needs=stats
SELECT coalesce(sum(t.size), 0)::bigint AS temp FROM pg_tablespace AS s, LATERAL pg_ls_tmpdir(s.oid) AS t
WHERE s.spcname <> 'pg_global';

-- @name reading.core from=100000 below=130000 needs=any
WITH w AS (SELECT CASE WHEN pg_is_in_recovery() THEN coalesce(pg_last_wal_receive_lsn(), pg_last_wal_replay_lsn())
                       ELSE pg_current_wal_lsn() END AS now)
SELECT pg_is_in_recovery() AS standby, w.now::text AS lsn,
  pg_wal_lsn_diff(w.now, c.redo_lsn)::bigint AS since_checkpoint,
  coalesce((SELECT max(pg_wal_lsn_diff(w.now, restart_lsn)) FROM pg_replication_slots), 0)::bigint AS kept_by_slots,
  (SELECT setting::bigint FROM pg_settings WHERE name = 'wal_keep_segments') * s.segment AS wal_keep,
  pg_size_bytes(current_setting('max_wal_size')) AS max_wal_size, s.segment,
  current_setting('archive_mode') AS archive_mode, a.last_archived_wal,
  (SELECT count(*) FROM pg_stat_activity WHERE backend_type = 'client backend'
     OR (backend_type IS NULL AND usesysid IS NOT NULL AND datid IS NOT NULL)) AS sessions,
  current_setting('max_connections')::int AS max_sessions,
  (SELECT setting::bigint FROM pg_settings WHERE name = 'shared_buffers') AS buffers,
  b.hit, b.read, 0 AS checksum_failures,
  (SELECT count(*) FROM pg_index AS i WHERE NOT i.indisvalid) AS bad_indexes,
  extract(epoch FROM pg_postmaster_start_time())::bigint AS started,
  current_setting('autovacuum') = 'on' AND current_setting('track_counts') = 'on' AS auto_statistics,
  current_setting('log_statement') = 'all' AS traces,
  (SELECT count(*) FROM pg_replication_slots) AS slots,
  (SELECT count(*) FROM pg_stat_replication) AS replicas,
  (SELECT count(*) FROM pg_db_role_setting AS r, unnest(r.setconfig) AS c(x) WHERE r.setrole = 0 AND c.x LIKE 'zelwbr3.connection_limit=%') AS admin_marks
FROM w, pg_control_checkpoint() AS c, pg_stat_archiver AS a,
  (SELECT coalesce((SELECT setting::bigint * CASE unit WHEN '8kB' THEN 8192 ELSE 1 END FROM pg_settings WHERE name = 'wal_segment_size'), 16777216) AS segment) AS s,
  (SELECT sum(blks_hit)::float8 AS hit, sum(blks_read)::float8 AS read FROM pg_stat_database) AS b;

-- @name reading.core from=130000 needs=any
WITH w AS (SELECT CASE WHEN pg_is_in_recovery() THEN coalesce(pg_last_wal_receive_lsn(), pg_last_wal_replay_lsn())
                       ELSE pg_current_wal_lsn() END AS now)
SELECT pg_is_in_recovery() AS standby, w.now::text AS lsn,
  pg_wal_lsn_diff(w.now, c.redo_lsn)::bigint AS since_checkpoint,
  coalesce((SELECT max(pg_wal_lsn_diff(w.now, restart_lsn)) FROM pg_replication_slots), 0)::bigint AS kept_by_slots,
  pg_size_bytes(current_setting('wal_keep_size')) AS wal_keep,
  pg_size_bytes(current_setting('max_wal_size')) AS max_wal_size, pg_size_bytes(current_setting('wal_segment_size')) AS segment,
  current_setting('archive_mode') AS archive_mode, a.last_archived_wal,
  (SELECT count(*) FROM pg_stat_activity WHERE backend_type = 'client backend'
     OR (backend_type IS NULL AND usesysid IS NOT NULL AND datid IS NOT NULL)) AS sessions,
  current_setting('max_connections')::int AS max_sessions,
  (SELECT setting::bigint FROM pg_settings WHERE name = 'shared_buffers') AS buffers,
  b.hit, b.read, b.checksum_failures,
  (SELECT count(*) FROM pg_index AS i WHERE NOT i.indisvalid
     AND NOT EXISTS (SELECT FROM pg_stat_progress_create_index AS p WHERE p.index_relid = i.indexrelid)) AS bad_indexes,
  extract(epoch FROM pg_postmaster_start_time())::bigint AS started,
  current_setting('autovacuum') = 'on' AND current_setting('track_counts') = 'on' AS auto_statistics,
  current_setting('log_statement') = 'all' AS traces,
  (SELECT count(*) FROM pg_replication_slots) AS slots,
  (SELECT count(*) FROM pg_stat_replication) AS replicas,
  (SELECT count(*) FROM pg_db_role_setting AS r, unnest(r.setconfig) AS c(x) WHERE r.setrole = 0 AND c.x LIKE 'zelwbr3.connection_limit=%') AS admin_marks
FROM w, pg_control_checkpoint() AS c, pg_stat_archiver AS a,
  (SELECT sum(blks_hit)::float8 AS hit, sum(blks_read)::float8 AS read, coalesce(sum(checksum_failures), 0)::bigint AS checksum_failures FROM pg_stat_database) AS b;

-- @name reading.monitors from=100000 needs=any  (shared_preload_libraries is hidden without stats: the setting of the library tells)
SELECT EXISTS (SELECT FROM pg_settings WHERE name = 'pg_stat_statements.track' AND setting <> 'none') AS statements,
  (SELECT setting::int FROM pg_settings WHERE name = 'log_min_duration_statement') >= 0
    OR coalesce((SELECT setting::int FROM pg_settings WHERE name = 'auto_explain.log_min_duration'), -1) >= 0 AS slow_commands;

-- @name reading.unarchived from=120000 needs=stats
SELECT count(*) AS segments FROM pg_ls_archive_statusdir() WHERE name LIKE '%.ready';

-- @name reading.wal from=100000 needs=stats  (pg_walfile_name cannot be used on a standby; $1 and $2 are lsn and segment of reading.core)
SELECT count(*) AS segments, coalesce(sum(size), 0)::bigint AS bytes, count(*) FILTER (WHERE
  ('x' || substr(name, 9, 8))::bit(32)::bigint * (4294967296 / $2::bigint) + ('x' || substr(name, 17, 8))::bit(32)::bigint
  > floor(pg_wal_lsn_diff($1::pg_lsn, '0/0') / $2::bigint)) AS recycled
FROM pg_ls_waldir() WHERE name ~ '^[0-9A-F]{24}$';

-- @name standby.nodes from=100000 needs=any  (details are null without stats, and then only the name is shown)
SELECT application_name AS name, host(client_addr) AS host, state, sync_state,
  pg_wal_lsn_diff(pg_current_wal_lsn(), sent_lsn)::bigint AS unsent, pg_wal_lsn_diff(pg_current_wal_lsn(), replay_lsn)::bigint AS unreplayed,
  extract(epoch FROM replay_lag)::float8 AS replay_lag
FROM pg_stat_replication AS r WHERE state IS DISTINCT FROM 'backup' AND NOT pg_is_in_recovery() AND application_name NOT IN ('pg_receivewal', 'pg_basebackup')
  AND NOT EXISTS (SELECT FROM pg_replication_slots AS s WHERE s.active_pid = r.pid AND s.slot_type = 'logical') ORDER BY pid;

-- @name standby.slots from=100000 needs=any  (a standby that has gone: its slot is not active)
SELECT slot_name FROM pg_replication_slots WHERE slot_type = 'physical' AND NOT active AND NOT temporary
  AND restart_lsn IS NOT NULL ORDER BY 1;

-- @name standby.own from=110000 below=130000 needs=any
SELECT r.status, r.sender_host, r.sender_port, pg_wal_lsn_diff(pg_last_wal_receive_lsn(), pg_last_wal_replay_lsn())::bigint AS unreplayed,
  CASE WHEN pg_last_wal_receive_lsn() = pg_last_wal_replay_lsn() THEN 0 ELSE extract(epoch FROM clock_timestamp() - pg_last_xact_replay_timestamp()) END::float8 AS lag,
  pg_is_wal_replay_paused() AS paused FROM (SELECT 1) AS one LEFT JOIN pg_stat_wal_receiver AS r ON true WHERE pg_is_in_recovery();

-- @name standby.own from=130000 needs=any
SELECT r.status, r.sender_host, r.sender_port, pg_wal_lsn_diff(pg_last_wal_receive_lsn(), pg_last_wal_replay_lsn())::bigint AS unreplayed,
  CASE WHEN pg_last_wal_receive_lsn() = pg_last_wal_replay_lsn() THEN 0 ELSE extract(epoch FROM clock_timestamp() - pg_last_xact_replay_timestamp()) END::float8 AS lag,
  CASE WHEN pg_is_in_recovery() THEN pg_is_wal_replay_paused() END AS paused
FROM (SELECT 1) AS one LEFT JOIN pg_stat_wal_receiver AS r ON true WHERE pg_is_in_recovery();

-- @name reading.locations from=100000 needs=any  (of tablespaces outside the data directory)
SELECT pg_tablespace_location(oid) AS location FROM pg_tablespace WHERE pg_tablespace_location(oid) <> '';
