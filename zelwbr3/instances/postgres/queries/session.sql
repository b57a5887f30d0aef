-- What is asked once for each connection.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name session from=100000 needs=any  (once for a connection; unknown names are left out by current_setting(…, true))
SELECT set_config(s.name, v.value, false) FROM (VALUES
  ('client_encoding', 'UTF8'), ('search_path', 'pg_catalog'),
  ('default_transaction_read_only', 'on'), ('statement_timeout', '10000'), ('lock_timeout', '250'),
  ('idle_in_transaction_session_timeout', '60000'), ('idle_session_timeout', '600000'),
  ('datestyle', 'ISO'), ('intervalstyle', 'postgres'), ('timezone', 'UTC'),
  ('bytea_output', 'hex'), ('extra_float_digits', '1'), ('jit', 'off'), ('max_parallel_workers_per_gather', '0'),
  ('row_security', 'off'), ('synchronize_seqscans', 'off')) AS v(name, value) JOIN pg_settings AS s ON lower(s.name) = v.name;

-- @name identity from=100000 needs=any  (once for a connection)
SELECT current_setting('server_version_num')::int AS version_num, split_part(version(), ' on ', 1) AS version_text,
  split_part(split_part(version(), ' on ', 2), ',', 1) AS platform, current_setting('block_size')::int AS page_size,
  current_setting('cluster_name') AS cluster_name, current_setting('port')::int AS port,
  extract(epoch FROM pg_postmaster_start_time())::bigint AS started, pg_backend_pid() AS pid,
  extract(epoch FROM (SELECT backend_start FROM pg_stat_activity WHERE pid = pg_backend_pid()))::bigint AS backend_start,
  r.rolsuper AS is_super,
  pg_has_role(current_user, 'pg_read_all_stats', 'USAGE') AS reads_stats,
  pg_has_role(current_user, 'pg_read_all_settings', 'USAGE') AS reads_settings,
  has_function_privilege('pg_ls_waldir()', 'EXECUTE') AS lists_wal,
  CASE WHEN pg_has_role(current_user, 'pg_read_all_settings', 'USAGE') THEN current_setting('data_directory') END AS data_directory,
  (SELECT system_identifier FROM pg_control_system()) AS system_identifier
FROM pg_roles AS r WHERE r.rolname = current_user;

-- @name extensions from=100000 needs=any
SELECT e.extname, quote_ident(n.nspname) AS schema, e.extversion FROM pg_extension AS e
JOIN pg_namespace AS n ON n.oid = e.extnamespace
WHERE e.extname IN ('pg_stat_statements', 'pg_buffercache', 'pgstattuple') ORDER BY 1;
