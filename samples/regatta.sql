-- The Tidewater regatta: three races over one weekend. Makes the database of regatta.scene.json:
--   sqlite3 build/samples/regatta.db < samples/regatta.sql

CREATE TABLE boat (
    sail TEXT PRIMARY KEY,
    name TEXT NOT NULL,
    skipper TEXT NOT NULL,
    club TEXT
);

CREATE TABLE finish (
    race INTEGER NOT NULL,
    sail TEXT NOT NULL REFERENCES boat,
    place INTEGER,           -- none for a boat that did not finish
    seconds REAL,
    protest BOOLEAN NOT NULL DEFAULT 0,
    PRIMARY KEY (race, sail)
);

INSERT INTO boat VALUES
    ('GW 12', 'Kittiwake', 'Ines Halloran', 'Greywharf'),
    ('KB 7', 'Ebb & Flow', 'Tomas Brandt', 'Kelderby'),
    ('SF 31', 'Salt Road', 'Maud Ekström', 'Sallowfield'),
    ('MG 4', 'Lantern', 'Piet Overdijk', 'Morrowgate'),
    ('IL 88', 'Second Wind', 'Yara Quint', NULL);

INSERT INTO finish (race, sail, place, seconds, protest) VALUES
    (1, 'GW 12', 1, 3124.5, 0), (1, 'SF 31', 2, 3130.2, 0), (1, 'KB 7', 3, 3188.9, 0),
    (1, 'IL 88', 4, 3251.0, 0), (1, 'MG 4', 5, 3260.4, 0),
    (2, 'SF 31', 1, 2984.1, 0), (2, 'KB 7', 2, 2990.7, 0), (2, 'GW 12', 3, 2991.3, 1),
    (2, 'MG 4', 4, 3077.8, 0), (2, 'IL 88', NULL, NULL, 0),
    (3, 'KB 7', 1, 3302.6, 0), (3, 'GW 12', 2, 3305.0, 0), (3, 'IL 88', 3, 3349.9, 0),
    (3, 'SF 31', 4, 3401.3, 0), (3, 'MG 4', NULL, NULL, 0);

-- Low points: the place counts, and one more than there are boats for not finishing.
CREATE VIEW standing AS
SELECT RANK() OVER (ORDER BY SUM(COALESCE(place, 6))) AS rank,
       sail, name, skipper, club,
       SUM(COALESCE(place, 6)) AS points,
       COUNT(place) AS finished
FROM finish JOIN boat USING (sail)
GROUP BY sail
ORDER BY points, finished DESC, name;
