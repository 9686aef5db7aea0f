-- The ten best customers.
/* Only those who
   are still here. */
CREATE TABLE customer (
    id INTEGER PRIMARY KEY,
    name VARCHAR(80) NOT NULL,
    since DATE DEFAULT CURRENT_DATE
);

SELECT c.name, count(*) AS orders, sum(o.total) * 1.19
FROM customer c
LEFT JOIN purchase o ON o.customer_id = c.id
WHERE c.name LIKE 'A%' AND o.note <> "x"
GROUP BY c.name ORDER BY 3 DESC;
update customer set name = 'it''s' where id = 0;
SELECT region, avg(price) FILTER (WHERE price > 0) FROM sale TABLESAMPLE system (10)
GROUP BY GROUPING SETS (ROLLUP (region), CUBE (shop, day));
SELECT rank() OVER (ORDER BY price ROWS BETWEEN UNBOUNDED PRECEDING AND 1 FOLLOWING) FROM sale;
CREATE TABLE note (id INTEGER PRIMARY KEY AUTOINCREMENT, body JSONB, GENERATED ALWAYS AS IDENTITY) ENGINE = x;
SET TRANSACTION ISOLATION LEVEL SERIALIZABLE; SELECT CURRENT_USER, IFNULL(a, 0), SUBSTRING(b, 2);
INSERT INTO note VALUES (1) ON CONFLICT DO NOTHING; VACUUM; REINDEX; -- SQLite
SELECT a FROM t WHERE b REGEXP 'x' FOR SHARE SKIP LOCKED;
