-- System tables, and how other tables are read.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name table.TABLES from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", pg_get_userbyid(c.relowner) AS owner, CASE c.relkind WHEN 'r' THEN 'table' WHEN 'p' THEN 'partitioned table' WHEN 'v' THEN 'view' WHEN 'm' THEN 'materialized view' ELSE 'foreign table' END AS type,
  CASE c.relpersistence WHEN 'p' THEN 'permanent' WHEN 'u' THEN 'unlogged' ELSE 'temporary' END AS kind, CASE WHEN c.reltuples >= 0 THEN c.reltuples::bigint END AS rows, c.relpages AS pages, obj_description(c.oid, 'pg_class') AS comment
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2;

-- @name table.COLUMNS from=100000 needs=any  (pg_get_expr waits for locks on the table that it is told; only what is computed from other columns needs one)
SELECT n.nspname AS schema, c.relname AS "table", a.attnum AS number, a.attname AS "column", format_type(a.atttypid, a.atttypmod) AS type, a.attnotnull AS "not null", CASE WHEN d.adbin::text LIKE '%{VAR %' THEN '(computed)' ELSE pg_get_expr(d.adbin, 0) END AS "default", col_description(c.oid, a.attnum) AS comment
FROM pg_attribute AS a JOIN pg_class AS c ON c.oid = a.attrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace LEFT JOIN pg_attrdef AS d ON d.adrelid = a.attrelid AND d.adnum = a.attnum
WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.INDEXES from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.relname AS index, m.amname AS method, i.indisprimary AS "primary", i.indisunique AS "unique", i.indisvalid AS valid, i.indisready AS ready, c.relpages AS pages, i.indpred IS NOT NULL AS partial, i.indexprs IS NOT NULL AS "with expressions"
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_class AS t ON t.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace JOIN pg_am AS m ON m.oid = c.relam ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.INDEXCOLUMNS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.relname AS index, k.n AS number, a.attname AS "column", k.n > cardinality(i.indclass::oid[]) AS included
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_class AS t ON t.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace, unnest(i.indkey::int2[]) WITH ORDINALITY AS k(att, n), pg_attribute AS a
WHERE a.attrelid = i.indexrelid AND a.attnum = k.n ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 4;

-- @name table.CONSTRAINTS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.conname AS "constraint", CASE c.contype WHEN 'p' THEN 'PRIMARY KEY' WHEN 'u' THEN 'UNIQUE' WHEN 'f' THEN 'FOREIGN KEY' WHEN 'c' THEN 'CHECK' WHEN 'x' THEN 'EXCLUDE' WHEN 'n' THEN 'NOT NULL' ELSE c.contype::text END AS type, c.convalidated AS valid,
  (SELECT string_agg(a.attname, ', ' ORDER BY k.n) FROM unnest(c.conkey) WITH ORDINALITY AS k(att, n) JOIN pg_attribute AS a ON a.attrelid = c.conrelid AND a.attnum = k.att) AS columns
FROM pg_constraint AS c JOIN pg_class AS t ON t.oid = c.conrelid JOIN pg_namespace AS n ON n.oid = t.relnamespace ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.FOREIGNKEYS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.conname AS "foreign key", rn.nspname AS "referenced schema", r.relname AS "referenced table", c.confupdtype AS "on update", c.confdeltype AS "on delete", c.condeferrable AS deferrable
FROM pg_constraint AS c JOIN pg_class AS t ON t.oid = c.conrelid JOIN pg_namespace AS n ON n.oid = t.relnamespace JOIN pg_class AS r ON r.oid = c.confrelid JOIN pg_namespace AS rn ON rn.oid = r.relnamespace WHERE c.contype = 'f' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.VIEWS from=100000 needs=any  (without the definition: pg_get_viewdef waits for locks on the tables)
SELECT n.nspname AS schema, c.relname AS view, pg_get_userbyid(c.relowner) AS owner, c.relkind = 'm' AS materialized FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('v', 'm') ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2;

-- @name table.TRIGGERS from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", t.tgname AS trigger, t.tgenabled <> 'D' AS enabled, p.proname AS function FROM pg_trigger AS t JOIN pg_class AS c ON c.oid = t.tgrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace JOIN pg_proc AS p ON p.oid = t.tgfoid WHERE NOT t.tgisinternal ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.FUNCTIONS from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS name, pg_get_function_identity_arguments(p.oid) AS arguments, pg_get_function_result(p.oid) AS result, l.lanname AS language, pg_get_userbyid(p.proowner) AS owner, p.prosecdef AS "runs as owner"
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace JOIN pg_language AS l ON l.oid = p.prolang WHERE p.prokind = 'f' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.PROCEDURES from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS name, pg_get_function_identity_arguments(p.oid) AS arguments, l.lanname AS language, pg_get_userbyid(p.proowner) AS owner, p.prosecdef AS "runs as owner"
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace JOIN pg_language AS l ON l.oid = p.prolang WHERE p.prokind = 'p' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.TABLEPRIVILEGES from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", pg_get_userbyid(x.grantor) AS grantor, CASE x.grantee WHEN 0 THEN 'PUBLIC' ELSE pg_get_userbyid(x.grantee) END AS grantee, x.privilege_type AS privilege, x.is_grantable AS grantable
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace, aclexplode(c.relacl) AS x WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 4, 5;

-- @name table.COLUMNSTATISTICS from=100000 needs=any
SELECT schemaname AS schema, tablename AS "table", attname AS "column", round((100 * null_frac)::numeric, 1) AS "null %", avg_width AS "bytes",
  CASE WHEN n_distinct < 0 THEN round((-100 * n_distinct)::numeric, 1) || ' % of the rows' ELSE n_distinct::text END AS "distinct", round(correlation::numeric, 2) AS correlation
FROM pg_stats ORDER BY schemaname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.SCHEMAS from=100000 needs=any
SELECT nspname AS schema, pg_get_userbyid(nspowner) AS owner, obj_description(oid, 'pg_namespace') AS comment FROM pg_namespace ORDER BY nspname ~ '^(pg_|information_schema$)', 1;

-- @name table.DOMAINS from=100000 needs=any
SELECT n.nspname AS schema, t.typname AS domain, format_type(t.typbasetype, t.typtypmod) AS type, t.typnotnull AS "not null", t.typdefault AS "default" FROM pg_type AS t JOIN pg_namespace AS n ON n.oid = t.typnamespace WHERE t.typtype = 'd' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2;

-- @name table.ROLEUSERS from=100000 needs=any
SELECT g.rolname AS role, m.rolname AS member, a.admin_option AS "may grant" FROM pg_auth_members AS a JOIN pg_roles AS g ON g.oid = a.roleid JOIN pg_roles AS m ON m.oid = a.member ORDER BY 1, 2;

-- @name table.TABLESTATISTICS from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", CASE WHEN c.reltuples >= 0 THEN c.reltuples::bigint END AS rows, c.relpages AS pages, c.relallvisible AS "pages all visible", coalesce(t.relpages, 0) AS "TOAST pages",
  pg_stat_get_live_tuples(c.oid) AS "live rows", pg_stat_get_dead_tuples(c.oid) AS "dead rows", pg_stat_get_mod_since_analyze(c.oid) AS "changed since analyze",
  greatest(pg_stat_get_last_analyze_time(c.oid), pg_stat_get_last_autoanalyze_time(c.oid))::timestamp(0)::text AS "last analyze"
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace LEFT JOIN pg_class AS t ON t.oid = c.reltoastrelid WHERE c.relkind IN ('r', 'm') ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2;

-- @name table.INDEXSTATISTICS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.relname AS index, CASE WHEN c.reltuples >= 0 THEN c.reltuples::bigint END AS entries, c.relpages AS pages,
  pg_stat_get_numscans(c.oid) AS scans, pg_stat_get_tuples_returned(c.oid) AS "entries read"
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_class AS t ON t.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind = 'i' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name table.USERS from=100000 needs=any
SELECT rolname AS "user", rolsuper AS super, rolcreatedb AS "creates databases", rolcreaterole AS "creates roles", rolreplication AS replication, rolbypassrls AS "bypasses row security",
  nullif(rolconnlimit, -1) AS "connection limit", rolvaliduntil::timestamp(0)::text AS "password until" FROM pg_roles WHERE rolcanlogin ORDER BY 1;

-- @name table.ROLES from=100000 needs=any
SELECT r.rolname AS role, r.rolsuper AS super, r.rolcreatedb AS "creates databases", r.rolcreaterole AS "creates roles", (SELECT count(*) FROM pg_auth_members AS m WHERE m.roleid = r.oid) AS members
FROM pg_roles AS r WHERE NOT r.rolcanlogin ORDER BY 1;

-- @name table.SEQUENCES from=100000 needs=any
SELECT schemaname AS schema, sequencename AS sequence, sequenceowner AS owner, data_type::text AS type, start_value AS start, min_value AS minimum, max_value AS maximum, increment_by AS increment, cycle, cache_size AS cached, last_value AS "last value"
FROM pg_sequences ORDER BY 1, 2;

-- @name table.FOREIGNKEYCOLUMNS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.conname AS "foreign key", k.n AS number, a.attname AS "column", r.relname AS "referenced table", ra.attname AS "referenced column"
FROM pg_constraint AS c JOIN pg_class AS t ON t.oid = c.conrelid JOIN pg_namespace AS n ON n.oid = t.relnamespace JOIN pg_class AS r ON r.oid = c.confrelid,
  unnest(c.conkey, c.confkey) WITH ORDINALITY AS k(att, ratt, n), pg_attribute AS a, pg_attribute AS ra
WHERE c.contype = 'f' AND a.attrelid = c.conrelid AND a.attnum = k.att AND ra.attrelid = c.confrelid AND ra.attnum = k.ratt ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 4;

-- @name table.COLUMNPRIVILEGES from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", a.attname AS "column", pg_get_userbyid(x.grantor) AS grantor, CASE x.grantee WHEN 0 THEN 'PUBLIC' ELSE pg_get_userbyid(x.grantee) END AS grantee, x.privilege_type AS privilege, x.is_grantable AS grantable
FROM pg_attribute AS a JOIN pg_class AS c ON c.oid = a.attrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace, aclexplode(a.attacl) AS x WHERE NOT a.attisdropped ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 5, 6;

-- @name table.FUNCTIONPARAMETERS from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS function, p.oid AS id, k.n AS number, p.proargnames[k.n] AS parameter, CASE p.proargmodes[k.n] WHEN 'o' THEN 'OUT' WHEN 'b' THEN 'INOUT' WHEN 'v' THEN 'VARIADIC' WHEN 't' THEN 'TABLE' ELSE 'IN' END AS direction, format_type(k.type, NULL) AS type
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace, unnest(coalesce(p.proallargtypes, p.proargtypes::oid[])) WITH ORDINALITY AS k(type, n) WHERE p.prokind = 'f' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 4;

-- @name table.FUNCTIONPARAMETERS from=100000 below=110000 needs=any
SELECT n.nspname AS schema, p.proname AS function, p.oid AS id, k.n AS number, p.proargnames[k.n] AS parameter, CASE p.proargmodes[k.n] WHEN 'o' THEN 'OUT' WHEN 'b' THEN 'INOUT' WHEN 'v' THEN 'VARIADIC' WHEN 't' THEN 'TABLE' ELSE 'IN' END AS direction, format_type(k.type, NULL) AS type
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace, unnest(coalesce(p.proallargtypes, p.proargtypes::oid[])) WITH ORDINALITY AS k(type, n) WHERE NOT p.proisagg AND NOT p.proiswindow ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 4;

-- @name table.PROCEDUREPARAMETERS from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS procedure, p.oid AS id, k.n AS number, p.proargnames[k.n] AS parameter, CASE p.proargmodes[k.n] WHEN 'o' THEN 'OUT' WHEN 'b' THEN 'INOUT' WHEN 'v' THEN 'VARIADIC' ELSE 'IN' END AS direction, format_type(k.type, NULL) AS type
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace, unnest(coalesce(p.proallargtypes, p.proargtypes::oid[])) WITH ORDINALITY AS k(type, n) WHERE p.prokind = 'p' ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3, 4;

-- @name table.FUNCTIONS from=100000 below=110000 needs=any
SELECT n.nspname AS schema, p.proname AS name, pg_get_function_identity_arguments(p.oid) AS arguments, pg_get_function_result(p.oid) AS result, l.lanname AS language, pg_get_userbyid(p.proowner) AS owner, p.prosecdef AS "runs as owner"
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace JOIN pg_language AS l ON l.oid = p.prolang WHERE NOT p.proisagg AND NOT p.proiswindow ORDER BY n.nspname ~ '^(pg_|information_schema$)', 1, 2, 3;

-- @name relation from=100000 needs=any  ($1 = schema, empty = by the search path $3; $2 = name: as it is, otherwise in lower case)
SELECT c.oid, quote_ident(n.nspname) || '.' || quote_ident(c.relname) AS name, c.relkind AS kind,
  EXISTS (SELECT FROM pg_inherits AS i WHERE i.inhparent = c.oid) AS has_children, f.name AS foreign_code
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace LEFT JOIN unnest($3::name[]) WITH ORDINALITY AS p(schema, number) ON p.schema = n.nspname,
  -- What reading runs besides the server's own code: a view or foreign table of somebody who is no superuser.
  LATERAL (WITH RECURSIVE r(oid) AS (SELECT c.oid UNION SELECT x.oid FROM r, LATERAL (
      SELECT i.inhrelid AS oid FROM pg_inherits AS i WHERE i.inhparent = r.oid
      UNION ALL SELECT d.refobjid FROM pg_rewrite AS w JOIN pg_depend AS d ON d.classid = 'pg_rewrite'::regclass AND d.objid = w.oid AND d.refclassid = 'pg_class'::regclass
        WHERE w.ev_class = r.oid AND (SELECT relkind = 'v' FROM pg_class WHERE oid = r.oid)) AS x)
    SELECT min(quote_ident(m.nspname) || '.' || quote_ident(o.relname)) AS name FROM r JOIN pg_class AS o ON o.oid = r.oid JOIN pg_namespace AS m ON m.oid = o.relnamespace
    WHERE o.relkind IN ('v', 'f') AND NOT EXISTS (SELECT FROM pg_roles AS u WHERE u.oid = o.relowner AND u.rolsuper)) AS f
WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f', 'S') AND c.relname IN ($2::text, lower($2::text)) AND CASE WHEN $1::text = '' THEN p.number IS NOT NULL ELSE n.nspname IN ($1::text, lower($1::text)) END
ORDER BY c.relname = $2::text DESC, n.nspname = $1::text DESC, p.number LIMIT 1;

-- @name relation.columns from=100000 needs=any  ($1 = oid; whether values can be long, and are to be cut)
SELECT quote_ident(a.attname) AS name, a.attname AS heading, format_type(a.atttypid, a.atttypmod) AS type,
  CASE WHEN a.atttypid = 'bytea'::regtype THEN 'bytes'
    WHEN a.attlen > 0 OR a.atttypid IN ('numeric'::regtype, 'inet'::regtype, 'cidr'::regtype)
      OR a.atttypid IN ('varchar'::regtype, 'bpchar'::regtype, 'bit'::regtype, 'varbit'::regtype) AND a.atttypmod BETWEEN 0 AND 10000 THEN 'short'
    WHEN a.atttypid IN ('text'::regtype, 'varchar'::regtype, 'bpchar'::regtype) THEN 'text' ELSE 'other' END AS length
FROM pg_attribute AS a WHERE a.attrelid = $1::oid AND a.attnum > 0 AND NOT a.attisdropped ORDER BY a.attnum;

-- @name key from=100000 needs=any  ($1 = oid; the key that blocks are continued by: its order is that of the server's own operators, and its values are read without anybody's code)
WITH k AS (
  SELECT i.indexrelid, i.indisprimary, quote_ident(a.attname) AS name, format_type(a.atttypid, a.atttypmod) AS type, k.n,
    count(*) OVER w AS columns, bool_and(a.attnotnull AND k.coll = a.attcollation AND k.opt = 0 AND o.opcdefault
      AND o.opcnamespace = 'pg_catalog'::regnamespace AND t.typtype IN ('b', 'e') AND t.typcategory <> 'A') OVER w AS is_usable
  FROM pg_index AS i JOIN pg_class AS x ON x.oid = i.indexrelid JOIN pg_am AS m ON m.oid = x.relam,
    unnest(i.indkey::int2[], i.indcollation::oid[], i.indoption::int2[], i.indclass::oid[]) WITH ORDINALITY AS k(att, coll, opt, class, n)
    JOIN pg_opclass AS o ON o.oid = k.class, pg_attribute AS a JOIN pg_type AS t ON t.oid = a.atttypid
  WHERE i.indrelid = $1::oid AND i.indisunique AND i.indisvalid AND i.indpred IS NULL AND i.indexprs IS NULL AND m.amname = 'btree'
    AND a.attrelid = i.indrelid AND a.attnum = k.att
  WINDOW w AS (PARTITION BY i.indexrelid))
SELECT name, type FROM k WHERE indexrelid = (SELECT indexrelid FROM k WHERE is_usable ORDER BY indisprimary DESC, columns, indexrelid LIMIT 1) ORDER BY n;
