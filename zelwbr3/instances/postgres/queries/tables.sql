-- System tables, and how other tables are read.
--
-- Each query begins with a line "-- @name NAME from=VERSION [below=VERSION] needs=RIGHT [record] [title=TEXT]".
-- Versions are as in server_version_num. Rights: any, stats (pg_read_all_stats, which pg_monitor has), super,
-- ext:NAME or ext:NAME+stats; @S stands for the schema of that extension.

-- @name table.TABLES from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", pg_get_userbyid(c.relowner) AS owner, CASE c.relkind WHEN 'r' THEN 'table' WHEN 'p' THEN 'partitioned table' WHEN 'v' THEN 'view' WHEN 'm' THEN 'materialized view' ELSE 'foreign table' END AS type,
  CASE c.relpersistence WHEN 'p' THEN 'permanent' WHEN 'u' THEN 'unlogged' ELSE 'temporary' END AS kind, c.reltuples::bigint AS rows, c.relpages AS pages, obj_description(c.oid, 'pg_class') AS comment
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY 1, 2;

-- @name table.COLUMNS from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", a.attnum AS number, a.attname AS "column", format_type(a.atttypid, a.atttypmod) AS type, a.attnotnull AS "not null", pg_get_expr(d.adbin, d.adrelid) AS "default", col_description(c.oid, a.attnum) AS comment
FROM pg_attribute AS a JOIN pg_class AS c ON c.oid = a.attrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace LEFT JOIN pg_attrdef AS d ON d.adrelid = a.attrelid AND d.adnum = a.attnum
WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY 1, 2, 3;

-- @name table.INDEXES from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.relname AS index, m.amname AS method, i.indisprimary AS "primary", i.indisunique AS "unique", i.indisvalid AS valid, i.indisready AS ready, c.relpages AS pages, pg_get_expr(i.indpred, i.indrelid) AS "where"
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_class AS t ON t.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace JOIN pg_am AS m ON m.oid = c.relam ORDER BY 1, 2, 3;

-- @name table.INDEXCOLUMNS from=110000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.relname AS index, k.n AS number, a.attname AS "column", k.n > i.indnkeyatts AS included
FROM pg_index AS i JOIN pg_class AS c ON c.oid = i.indexrelid JOIN pg_class AS t ON t.oid = i.indrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace, unnest(i.indkey::int2[]) WITH ORDINALITY AS k(att, n), pg_attribute AS a
WHERE a.attrelid = i.indexrelid AND a.attnum = k.n ORDER BY 1, 2, 3, 4;

-- @name table.CONSTRAINTS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.conname AS "constraint", CASE c.contype WHEN 'p' THEN 'PRIMARY KEY' WHEN 'u' THEN 'UNIQUE' WHEN 'f' THEN 'FOREIGN KEY' WHEN 'c' THEN 'CHECK' WHEN 'x' THEN 'EXCLUDE' WHEN 'n' THEN 'NOT NULL' ELSE c.contype::text END AS type, c.convalidated AS valid,
  (SELECT string_agg(a.attname, ', ' ORDER BY k.n) FROM unnest(c.conkey) WITH ORDINALITY AS k(att, n) JOIN pg_attribute AS a ON a.attrelid = c.conrelid AND a.attnum = k.att) AS columns
FROM pg_constraint AS c JOIN pg_class AS t ON t.oid = c.conrelid JOIN pg_namespace AS n ON n.oid = t.relnamespace ORDER BY 1, 2, 3;

-- @name table.FOREIGNKEYS from=100000 needs=any
SELECT n.nspname AS schema, t.relname AS "table", c.conname AS "foreign key", rn.nspname AS "referenced schema", r.relname AS "referenced table", c.confupdtype AS "on update", c.confdeltype AS "on delete", c.condeferrable AS deferrable
FROM pg_constraint AS c JOIN pg_class AS t ON t.oid = c.conrelid JOIN pg_namespace AS n ON n.oid = t.relnamespace JOIN pg_class AS r ON r.oid = c.confrelid JOIN pg_namespace AS rn ON rn.oid = r.relnamespace WHERE c.contype = 'f' ORDER BY 1, 2, 3;

-- @name table.VIEWS from=100000 needs=any  (without the definition: pg_get_viewdef waits for locks on the tables)
SELECT n.nspname AS schema, c.relname AS view, pg_get_userbyid(c.relowner) AS owner, c.relkind = 'm' AS materialized FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace WHERE c.relkind IN ('v', 'm') ORDER BY 1, 2;

-- @name table.TRIGGERS from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", t.tgname AS trigger, t.tgenabled <> 'D' AS enabled, p.proname AS function FROM pg_trigger AS t JOIN pg_class AS c ON c.oid = t.tgrelid JOIN pg_namespace AS n ON n.oid = c.relnamespace JOIN pg_proc AS p ON p.oid = t.tgfoid WHERE NOT t.tgisinternal ORDER BY 1, 2, 3;

-- @name table.FUNCTIONS from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS name, pg_get_function_identity_arguments(p.oid) AS arguments, pg_get_function_result(p.oid) AS result, l.lanname AS language, pg_get_userbyid(p.proowner) AS owner, p.prosecdef AS "runs as owner"
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace JOIN pg_language AS l ON l.oid = p.prolang WHERE p.prokind = 'f' ORDER BY 1, 2, 3;

-- @name table.PROCEDURES from=110000 needs=any
SELECT n.nspname AS schema, p.proname AS name, pg_get_function_identity_arguments(p.oid) AS arguments, l.lanname AS language, pg_get_userbyid(p.proowner) AS owner, p.prosecdef AS "runs as owner"
FROM pg_proc AS p JOIN pg_namespace AS n ON n.oid = p.pronamespace JOIN pg_language AS l ON l.oid = p.prolang WHERE p.prokind = 'p' ORDER BY 1, 2, 3;

-- @name table.TABLEPRIVILEGES from=100000 needs=any
SELECT n.nspname AS schema, c.relname AS "table", pg_get_userbyid(x.grantor) AS grantor, CASE x.grantee WHEN 0 THEN 'PUBLIC' ELSE pg_get_userbyid(x.grantee) END AS grantee, x.privilege_type AS privilege, x.is_grantable AS grantable
FROM pg_class AS c JOIN pg_namespace AS n ON n.oid = c.relnamespace, aclexplode(c.relacl) AS x WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY 1, 2, 4, 5;

-- @name table.COLUMNSTATISTICS from=100000 needs=any
SELECT schemaname AS schema, tablename AS "table", attname AS "column", null_frac AS "null share", avg_width AS "bytes", n_distinct AS "distinct (negative: share of the rows)", correlation FROM pg_stats ORDER BY 1, 2, 3;

-- @name table.SCHEMAS from=100000 needs=any
SELECT nspname AS schema, pg_get_userbyid(nspowner) AS owner, obj_description(oid, 'pg_namespace') AS comment FROM pg_namespace ORDER BY 1;

-- @name table.DOMAINS from=100000 needs=any
SELECT n.nspname AS schema, t.typname AS domain, format_type(t.typbasetype, t.typtypmod) AS type, t.typnotnull AS "not null", t.typdefault AS "default" FROM pg_type AS t JOIN pg_namespace AS n ON n.oid = t.typnamespace WHERE t.typtype = 'd' ORDER BY 1, 2;

-- @name table.ROLEUSERS from=100000 needs=any
SELECT g.rolname AS role, m.rolname AS member, a.admin_option AS "may grant" FROM pg_auth_members AS a JOIN pg_roles AS g ON g.oid = a.roleid JOIN pg_roles AS m ON m.oid = a.member ORDER BY 1, 2;

-- @name key from=110000 needs=any  ($1 = oid; the first row is the key that blocks are continued by)
SELECT (SELECT array_agg(quote_ident(a.attname) ORDER BY k.n) FROM unnest(i.indkey::int2[]) WITH ORDINALITY AS k(att, n) JOIN pg_attribute AS a ON a.attrelid = i.indrelid AND a.attnum = k.att WHERE k.n <= i.indnkeyatts) AS columns,
  (SELECT array_agg(format_type(a.atttypid, a.atttypmod) ORDER BY k.n) FROM unnest(i.indkey::int2[]) WITH ORDINALITY AS k(att, n) JOIN pg_attribute AS a ON a.attrelid = i.indrelid AND a.attnum = k.att WHERE k.n <= i.indnkeyatts) AS types
FROM pg_index AS i JOIN pg_class AS x ON x.oid = i.indexrelid JOIN pg_am AS m ON m.oid = x.relam
WHERE i.indrelid = $1::oid AND i.indisunique AND i.indisvalid AND i.indpred IS NULL AND i.indexprs IS NULL AND m.amname = 'btree'
  AND NOT EXISTS (SELECT FROM unnest(i.indoption::int2[]) AS o WHERE o <> 0)
  AND NOT EXISTS (SELECT FROM unnest(i.indkey::int2[]) WITH ORDINALITY AS k(att, n) JOIN pg_attribute AS a ON a.attrelid = i.indrelid AND a.attnum = k.att
                  WHERE k.n <= i.indnkeyatts AND (NOT a.attnotnull OR (i.indcollation::oid[])[k.n - 1] <> a.attcollation))
ORDER BY i.indisprimary DESC, i.indnkeyatts;
