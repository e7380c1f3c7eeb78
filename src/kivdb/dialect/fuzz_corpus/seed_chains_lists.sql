select x + ',' + x + 'a' ^ 3 & 1 | 2 from a where y in (1, 2.5, 1e3, 'b''c', y) and (y = 1 or y = 2 or not y <> 3) and m = (select m from b where b.x = a.x)
